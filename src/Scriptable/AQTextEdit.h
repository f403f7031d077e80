#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QTextEdit>

namespace QtUIBase {

/**
 * A scriptable QTextEdit that records its text when it loses the focus.
 *
 * Each focus loss writes one "textChanged" line whose arguments are the
 * lines of the plain text (whether or not it changed; empty lines are left
 * out by the writer) and emits ATextChanged() with recording suppressed.
 * The focus-out event is not passed on to QTextEdit.
 *
 * Replay joins the arguments into the plain text, with a line break after
 * every argument that differs from the last one: lines "a", "b", "a" come
 * back as "ab", a line break, "a". It then reports ATextChanged() as a
 * user's edit does.
 */
class ORVEXQTUIBASE_EXPORT AQTextEdit : public QTextEdit, public IAQScriptable
{
    Q_OBJECT

public:
    AQTextEdit(const QString& name, const QString& text, QWidget* parent, bool scriptable);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void ATextChanged(const QString& text);

protected:
    void focusOutEvent(QFocusEvent* event) override;

private Q_SLOTS:
    void handleTextChangedSignal();

private:
    bool m_scriptable = false;
};

} // namespace QtUIBase
