#include "Widget/Chart/HorizontalLineMarker.h"

#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexCurve.h"

namespace Gui::Widget {

HorizontalLineMarker::HorizontalLineMarker(const QPointF& data, std::shared_ptr<ChartMarkerGroup> group,
                                           std::string id)
    : LineMarker(data, std::move(group), std::move(id))
{
}

QStringList HorizontalLineMarker::hintTexts() const
{
    const auto c = curve();
    const std::string unit = c ? c->yUnit() : std::string();
    if (isPolar())
        return {valueText(QStringLiteral("Mag"), data().y(), unit, false)};
    return {valueText(QStringLiteral("Y"), data().y(), unit, false)};
}

QPointF HorizontalLineMarker::hintTopLeft(const QSizeF& size) const
{
    const auto* v = view();
    if (!v)
        return position();
    const QRectF area = v->plotArea();
    if (isPolar()) {
        // On top of the magnitude circle.
        const QPointF top = v->valueToScene(QPointF(0, data().y()));
        return QPointF(top.x() + 4, top.y() - size.height() - 2);
    }
    const double y = position().y();
    const double top = y - size.height() - 2 < area.top() ? y + 2 : y - size.height() - 2;
    // On the left: the docked legend takes the top-right corner.
    return QPointF(area.left() + 4, top);
}

} // namespace Gui::Widget
