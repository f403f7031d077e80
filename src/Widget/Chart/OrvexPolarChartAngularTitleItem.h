#pragma once

#include "Widget/Chart/OrvexChartOverlayItem.h"

namespace Gui::Widget {

/**
 * The angular axis title of a polar chart, centred horizontally on the plot
 * area just above it, in the "Axes Labels" font and colour.
 */
class ORVEXQTUIBASE_EXPORT OrvexPolarChartAngularTitleItem : public OrvexChartOverlayItem
{
public:
    explicit OrvexPolarChartAngularTitleItem(OrvexChartView* view);

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
};

} // namespace Gui::Widget
