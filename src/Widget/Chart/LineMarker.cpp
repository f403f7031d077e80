#include "Widget/Chart/LineMarker.h"

namespace Gui::Widget {

LineMarker::LineMarker(const QPointF& data, std::shared_ptr<ChartMarkerGroup> group, std::string id)
    : Marker(data, std::move(group), std::move(id))
{
}

void LineMarker::setStyle(Qt::PenStyle style)
{
    if (style == m_style)
        return;
    m_style = style;
    emit dataChanged();
}

QString LineMarker::valueText(const QString& name, double value, const std::string& unit, bool degrees) const
{
    QString text = degrees ? QStringLiteral("g %1 = %2 (Deg)").arg(name, number(value))
                           : QStringLiteral("g %1 = %2 ").arg(name, number(value));
    if (attached())
        text += QString::fromStdString(unit);
    return text;
}

} // namespace Gui::Widget
