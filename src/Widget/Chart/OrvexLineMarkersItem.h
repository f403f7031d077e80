#pragma once

#include "Widget/Chart/OrvexChartOverlayItem.h"

namespace Gui::Widget {

/**
 * Draws the line markers: a line across the plot area in the marker's colour,
 * weight and style (a circle for a magnitude marker and a ray for an angle
 * marker in a polar chart), and the marker's hint box.
 */
class ORVEXQTUIBASE_EXPORT OrvexLineMarkersItem : public OrvexChartOverlayItem
{
public:
    explicit OrvexLineMarkersItem(OrvexChartView* view);

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
};

} // namespace Gui::Widget
