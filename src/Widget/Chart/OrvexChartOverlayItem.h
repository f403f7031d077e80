#pragma once

#include "OrvexQtUIBase_export.h"

#include <QGraphicsItem>

namespace Gui::Widget {

class Marker;
class OrvexChartView;

/**
 * Base of the graphics items the chart view draws over its chart. Covers the
 * whole chart and paints from the view's current state; owns no model data.
 * The view calls `refresh()` whenever the plot area, the ranges or the data
 * change.
 */
class ORVEXQTUIBASE_EXPORT OrvexChartOverlayItem : public QGraphicsItem
{
public:
    explicit OrvexChartOverlayItem(OrvexChartView* view);

    QRectF boundingRect() const override;
    OrvexChartView* view() const { return m_view; }
    /// Takes the new geometry and repaints.
    virtual void refresh();

protected:
    /// The marker's label and read-out in its hint box, in the "Markers"
    /// font and colour; a highlighted marker gets a thicker outline.
    void drawHintBox(QPainter* painter, const Marker& marker) const;

    OrvexChartView* m_view;
};

} // namespace Gui::Widget
