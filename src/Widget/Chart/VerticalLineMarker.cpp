#include "Widget/Chart/VerticalLineMarker.h"

#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexCurve.h"

namespace Gui::Widget {

VerticalLineMarker::VerticalLineMarker(const QPointF& data, std::shared_ptr<ChartMarkerGroup> group, std::string id)
    : LineMarker(data, std::move(group), std::move(id))
{
}

QStringList VerticalLineMarker::hintTexts() const
{
    const auto c = curve();
    const std::string unit = c ? c->xUnit() : std::string();
    if (isPolar())
        return {valueText(QStringLiteral("Ang"), data().x(), unit, true)};
    return {valueText(QStringLiteral("X"), data().x(), unit, false)};
}

QPointF VerticalLineMarker::hintTopLeft(const QSizeF& size) const
{
    const auto* v = view();
    if (!v)
        return position();
    const QRectF area = v->plotArea();
    if (isPolar()) {
        // At the outer end of the angle ray.
        const QPointF end = v->valueToScene(QPointF(data().x(), v->getRangeMagnitude().second));
        return QPointF(end.x() + 4, end.y() - size.height() / 2);
    }
    const double x = position().x();
    const double left = x + 2 + size.width() > area.right() ? x - 2 - size.width() : x + 2;
    return QPointF(left, area.top() + 4);
}

} // namespace Gui::Widget
