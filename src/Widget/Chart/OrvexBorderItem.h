#pragma once

#include "Widget/Chart/OrvexChartOverlayItem.h"

namespace Gui::Widget {

/**
 * The plot-area border of cartesian charts, drawn with the X axis's line pen.
 * Draws nothing in a polar chart.
 */
class ORVEXQTUIBASE_EXPORT OrvexBorderItem : public OrvexChartOverlayItem
{
public:
    explicit OrvexBorderItem(OrvexChartView* view);

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
};

} // namespace Gui::Widget
