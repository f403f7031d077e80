#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQScriptableLineEdit.h"

namespace QtUIBase {

/**
 * The line edit of a filter drop-down (AQFilterComboBox).
 *
 * For a Text column it is editable and typing records as in
 * AQScriptableLineEdit. For the Real, Integer, Region, PassFail and OnOff
 * kinds it is read-only, and a left click opens an AQFilterDialog of that
 * kind (named "filter_dialog", owned by this line edit) at the click
 * position; the dialog's filter text comes back through filterChanged(),
 * which records it as one "filterChanged" line with the text and sets it.
 * A non-empty text is also offered to the drop-down's history (saveFilter).
 *
 * Replay of "filterChanged" sets the recorded text (an empty text is
 * recorded without argument, and replayed as such) and offers it to the
 * history, recording suppressed.
 */
class ORVEXQTUIBASE_EXPORT AQFilterLineEdit : public AQScriptableLineEdit
{
    Q_OBJECT

public:
    AQFilterLineEdit(int kind, const QString& name, QWidget* parent);

    int kind() const { return m_kind; }
    void setKind(int kind) { m_kind = kind; }

    void scriptReplay(const QString& signal, const QStringList& args) override;

Q_SIGNALS:
    void saveFilter(const QString& text);

public Q_SLOTS:
    void filterChanged(const QString& text);

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    int m_kind;
};

} // namespace QtUIBase
