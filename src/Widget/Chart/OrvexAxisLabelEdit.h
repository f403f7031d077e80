#pragma once

#include "OrvexQtUIBase_export.h"

#include <QLineEdit>

namespace Gui::Widget {

class OrvexChartView;

/**
 * In-place editor of an axis title. A double click on the X or Y title
 * opens it over the title with the current text selected; Return or leaving
 * the field sets the label on the view (recorded like any label change),
 * Escape closes it unchanged. Hidden at the start.
 */
class ORVEXQTUIBASE_EXPORT OrvexAxisLabelEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit OrvexAxisLabelEdit(OrvexChartView* view);

    void editAxis(Qt::Orientation axis);
    Qt::Orientation editedAxis() const { return m_axis; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void commit();

    OrvexChartView* m_view;
    Qt::Orientation m_axis = Qt::Horizontal;
};

} // namespace Gui::Widget
