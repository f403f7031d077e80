#pragma once

#include "Widget/Chart/OrvexChartOverlayItem.h"

#include <QStringList>

#include <string>

namespace Gui::Widget {

/**
 * The probe read-out: a black cross on a curve point and a box with its
 * coordinates (" X = .. ", " Y = .. " with the curve's units; magnitude and
 * angle in a polar chart; the curve's label as a third line when the view
 * shows names in labels).
 *
 * The box sits 10 px right of and below the point and flips to the left or
 * above when it would leave the plot area. It is white (translucent with the
 * view's transparent background flag); texts use the "Markers" colour, or
 * the curve's with the match-colour flag; with the connector flag a line
 * joins the point to the nearest box corner. Nothing is drawn while the
 * point is outside the plot area or no probe is set (the start).
 */
class ORVEXQTUIBASE_EXPORT OrvexProbeItem : public OrvexChartOverlayItem
{
public:
    explicit OrvexProbeItem(OrvexChartView* view);

    void setProbe(const QPointF& data, const std::string& curveId);
    void clearProbe();
    bool hasProbe() const { return m_active; }
    const std::string& curveId() const { return m_curveId; }
    QPointF dataPoint() const { return m_data; }
    /// The probe point in scene coordinates.
    QPointF probePoint() const { return m_point; }

    QStringList texts() const;
    /// The box in scene coordinates after flipping.
    QRectF boxRect() const;
    /// The connector from the point to the box, or a null line when the
    /// connector flag is off.
    QLineF connectorLine() const;
    /// Whether the point lies in the plot area, i.e. anything is drawn.
    bool isShown() const;

    void refresh() override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    bool m_active = false;
    QPointF m_data;
    QPointF m_point;
    std::string m_curveId;
};

} // namespace Gui::Widget
