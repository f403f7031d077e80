#include "Widget/Chart/OrvexChartOverlayItem.h"

#include "Widget/Chart/Marker.h"
#include "Widget/Chart/OrvexChartView.h"

#include <QFontMetricsF>
#include <QPainter>

namespace Gui::Widget {

OrvexChartOverlayItem::OrvexChartOverlayItem(OrvexChartView* view) : m_view(view)
{
}

QRectF OrvexChartOverlayItem::boundingRect() const
{
    return m_view && m_view->chart() ? m_view->chart()->geometry() : QRectF();
}

void OrvexChartOverlayItem::refresh()
{
    prepareGeometryChange();
    update();
}

void OrvexChartOverlayItem::drawHintBox(QPainter* painter, const Marker& marker) const
{
    const QRectF box = marker.getHintRect();
    const auto& configuration = m_view->getConfiguration();
    const QFont font = configuration.font("Markers");
    const QFontMetricsF metrics(font);
    painter->save();
    painter->setBrush(Qt::white);
    painter->setPen(QPen(marker.color(), marker.highlight() ? 2 : 1));
    painter->drawRect(box);
    painter->setFont(font);
    painter->setPen(configuration.color("Markers"));
    double baseline = box.top() + 2 + metrics.ascent();
    for (const QString& line : marker.hintLines()) {
        painter->drawText(QPointF(box.left() + 3, baseline), line);
        baseline += metrics.height();
    }
    painter->restore();
}

} // namespace Gui::Widget
