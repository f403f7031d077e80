#pragma once

#include "Widget/Chart/OrvexChartOverlayItem.h"

namespace Gui::Widget {

/**
 * Draws the point markers: the symbol character at the marker's position in
 * its colour, sized by the symbol size, and the marker's hint box.
 */
class ORVEXQTUIBASE_EXPORT OrvexPointMarkersItem : public OrvexChartOverlayItem
{
public:
    explicit OrvexPointMarkersItem(OrvexChartView* view);

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
};

} // namespace Gui::Widget
