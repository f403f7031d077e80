#pragma once

#include "Widget/Chart/OrvexChartOverlayItem.h"

namespace Gui::Widget {

/**
 * Bar drawing of the bar view type: every visible curve's points (as handed to its
 * series, so one bar per pixel column at most) as bars `barWidth()` px wide
 * from the value 0 (or the nearest plot edge) to the point, filled and
 * outlined in the curve's colour and clipped to the plot area. Draws only in
 * the bar view type.
 */
class ORVEXQTUIBASE_EXPORT OrvexBarsItem : public OrvexChartOverlayItem
{
public:
    explicit OrvexBarsItem(OrvexChartView* view);

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
};

} // namespace Gui::Widget
