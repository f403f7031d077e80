#pragma once

#include "Widget/Chart/OrvexChartOverlayItem.h"

namespace Gui::Widget {

/**
 * Angle labels of a polar chart: with n angular divisions, one label every
 * 360 / n degrees around the plot circle, 3 px inside the radius, in the
 * "Axes Divisions" font and colour at opacity 0.5.
 */
class ORVEXQTUIBASE_EXPORT OrvexAngularLabelsItem : public OrvexChartOverlayItem
{
public:
    explicit OrvexAngularLabelsItem(OrvexChartView* view);

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
};

} // namespace Gui::Widget
