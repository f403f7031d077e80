#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QLineEdit>

namespace QtUIBase {

enum AQScriptableLineEditOption {
    AQNoLineEditOption = 0x0,
    /// Keeps the line edit out of the pending-line-edit mechanism: typing
    /// does not make it pending, and push buttons do not flush it.
    AQLineEditNotPending = 0x1,
};
Q_DECLARE_FLAGS(AQScriptableLineEditOptions, AQScriptableLineEditOption)

/**
 * A scriptable QLineEdit that records a value once per finished edit.
 *
 * Typing makes the line edit the engine's pending one; finishing the edit,
 * or a push button flushing the pending line edit before its own record,
 * writes one "editingFinished" line with the text (and "1" when the edit
 * was finished by a mouse move). A text equal to the last recorded one is
 * not recorded again and emits no AEditingFinished(). setTextInternal() sets
 * a program-made text without it ever being recorded.
 *
 * Defaults: options none, last recorded text the constructor's text.
 */
class ORVEXQTUIBASE_EXPORT AQScriptableLineEdit : public QLineEdit, public IAQScriptable
{
    Q_OBJECT

public:
    AQScriptableLineEdit(const QString& name, const QString& text, QWidget* parent, bool scriptable);
    AQScriptableLineEdit(const QString& name, QWidget* parent, bool scriptable);
    /// Registers under the empty name, scriptable.
    explicit AQScriptableLineEdit(QWidget* parent = nullptr);
    ~AQScriptableLineEdit() override;

    void scriptReplay(const QString& signal, const QStringList& args) override;

    /// Records the current text as a finished edit (see class comment).
    void emitEditingFinished(bool mouseMove);
    /// Sets @p text as the program's own value: it is not recorded later.
    void setTextInternal(const QString& text);
    void setOptions(AQScriptableLineEditOptions options);
    AQScriptableLineEditOptions getOptions() const { return m_options; }
    bool isMouseMove() const { return m_mouseMove; }
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void ATextChanged(const QString& text);
    void AEditingFinished();
    void AReturnPressed();

protected:
    void trapSignals();
    void untrapSignals();
    void connectNotify(const QMetaMethod& signal) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

protected Q_SLOTS:
    virtual void handleEditingFinishedSignal();

private Q_SLOTS:
    void handleTextChangedSignal(const QString& text);
    void handleReturnPressedSignal();

private:
    void init(const QString& name);
    bool keepsOutOfPending() const { return m_options.testFlag(AQLineEditNotPending); }

    bool m_textChangedListened = false;
    bool m_scriptable = false;
    AQScriptableLineEditOptions m_options;
    QString m_lastRecordedText;
    bool m_mouseMove = false;
};

} // namespace QtUIBase

Q_DECLARE_OPERATORS_FOR_FLAGS(QtUIBase::AQScriptableLineEditOptions)
