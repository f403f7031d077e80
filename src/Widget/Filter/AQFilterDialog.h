#pragma once

#include "OrvexQtUIBase_export.h"

#include <QWidget>

namespace QtUIBase {

class AQComboBox;
class AQPushButton;
class AQScriptableLineEdit;

/**
 * The small tool window in which the user picks a column's filter
 * condition; OK emits the filter text (the syntax AQSortMultiFilterProxyModel
 * reads) and closes, Cancel just closes. Application-modal, deleted on close.
 *
 * By kind: Real and Integer ("Numeric Filter:") offer "unlimited",
 * "equal to", "less than", "greater than" and "in range" with one or two
 * values (doubles without ",", or ints) giving "", "=v", "<v", ">v" or
 * ">v1,<v2"; Region ("Region Filter:") two corner points giving
 * "(x1,y1):(x2,y2)"; PassFail ("Pass/Fail Filter:") "PASS" or "FAIL"; OnOff
 * ("On/Off Filter:") "ON" or "OFF". A missing value gives the empty text,
 * which clears the column's filter.
 *
 * The fields and buttons record nothing themselves: the chosen text is
 * recorded once, by the filter line edit that receives it.
 */
class ORVEXQTUIBASE_EXPORT AQFilterDialog : public QWidget
{
    Q_OBJECT

public:
    AQFilterDialog(int kind, const QString& name, QWidget* parent);

    int kind() const { return m_kind; }
    int condition() const { return m_condition; }
    /// The text OK would emit now.
    QString filterText() const;

    /// Moves the dialog next to global point @p point, kept on the screen
    /// that holds it (or, off every screen, on the dialog's own).
    void placeAt(const QPoint& point);
    /// Where placeAt() puts a dialog of @p size for @p point on @p screen.
    static QPoint placement(const QRect& screen, const QPoint& point, const QSize& size);

Q_SIGNALS:
    void filterChanged(const QString& filter);

public Q_SLOTS:
    void conditionChanged(int index);
    void onOk();
    void onCancel();

private:
    AQScriptableLineEdit* addValueEdit(const QString& name);
    void updateFields();

    int m_kind;
    int m_condition = 0;
    AQComboBox* m_conditionBox = nullptr;
    AQScriptableLineEdit* m_edits[4] = {};
    AQPushButton* m_ok = nullptr;
    AQPushButton* m_cancel = nullptr;
};

} // namespace QtUIBase
