#include "Widget/Chart/PointMarker.h"

namespace Gui::Widget {

PointMarker::PointMarker(const QPointF& data, std::shared_ptr<ChartMarkerGroup> group, std::string id)
    : Marker(data, std::move(group), std::move(id))
{
}

void PointMarker::setSymbol(MarkerSymbol symbol)
{
    if (symbol == m_symbol)
        return;
    m_symbol = symbol;
    emit dataChanged();
}

void PointMarker::setSymbolSize(double size)
{
    if (size == m_symbolSize)
        return;
    m_symbolSize = size;
    emit dataChanged();
}

QString PointMarker::symbolString() const
{
    return symbolString(m_symbol);
}

QString PointMarker::symbolString(MarkerSymbol symbol)
{
    switch (symbol) {
    case Diamond: return QString(QChar(0x25C7));
    case Triangle: return QString(QChar(0x25B3));
    case InvertedTriangle: return QString(QChar(0x25BD));
    case Rectangle: return QString(QChar(0x25A1));
    case Circle: return QString(QChar(0x25EF));
    case HorizontalLine: return QString(QChar(0x2500));
    case VerticalLine: return QString(QChar(0x2502));
    case Cross: return QString(QChar(0x2573));
    case Plus: return QString(QChar(0x253C));
    case BackwardSlash: return QStringLiteral("\\");
    case ForwardSlash: return QStringLiteral("/");
    default: return QStringLiteral("None");
    }
}

QStringList PointMarker::hintTexts() const
{
    const QPointF p = data();
    if (isPolar())
        return {QStringLiteral(" Mag = %1 ").arg(number(p.y())), QStringLiteral(" Ang = %1 (Deg)").arg(number(p.x()))};
    return {QStringLiteral(" X = %1 ").arg(number(p.x())), QStringLiteral(" Y = %1 ").arg(number(p.y()))};
}

} // namespace Gui::Widget
