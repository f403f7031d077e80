#pragma once

#include "Widget/Chart/Marker.h"

namespace Gui::Widget {

/**
 * Base of the markers drawn as a line across the plot (a circle or a ray in
 * a polar chart). Default style: dash-dot-dot. The read-out texts keep a
 * leading "g" ("g Y = 2.5 "), which the recorded formats expect.
 */
class ORVEXQTUIBASE_EXPORT LineMarker : public Marker
{
    Q_OBJECT

public:
    LineMarker(const QPointF& data, std::shared_ptr<ChartMarkerGroup> group, std::string id);

    Qt::PenStyle style() const { return m_style; }
    void setStyle(Qt::PenStyle style);

protected:
    /// "g <name> = <value> " plus @p unit when attached.
    QString valueText(const QString& name, double value, const std::string& unit, bool degrees) const;

private:
    Qt::PenStyle m_style = Qt::DashDotDotLine;
};

} // namespace Gui::Widget
