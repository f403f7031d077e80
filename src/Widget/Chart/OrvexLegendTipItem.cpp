#include "Widget/Chart/OrvexLegendTipItem.h"

#include "Widget/Chart/OrvexChartView.h"

#include <QFontMetricsF>
#include <QPainter>

namespace Gui::Widget {

OrvexLegendTipItem::OrvexLegendTipItem(OrvexChartView* view) : OrvexChartOverlayItem(view)
{
    setZValue(40);
}

void OrvexLegendTipItem::showTip(const QString& text, const QPointF& scenePos)
{
    prepareGeometryChange();
    m_text = text;
    m_anchor = scenePos;
    m_shown = true;
    update();
}

void OrvexLegendTipItem::hideTip()
{
    if (!m_shown)
        return;
    prepareGeometryChange();
    m_shown = false;
    update();
}

QRectF OrvexLegendTipItem::tipRect() const
{
    const QFontMetricsF metrics(m_view->getConfiguration().font("Legend"));
    const QRectF text = metrics.boundingRect(QRectF(0, 0, 1000, 1000), Qt::AlignLeft, m_text);
    const QSizeF size(text.width() + 8, text.height() + 6);
    QPointF corner = m_anchor + QPointF(12, 12);
    const QRectF chart = OrvexChartOverlayItem::boundingRect();
    if (corner.x() + size.width() > chart.right())
        corner.setX(m_anchor.x() - 12 - size.width());
    return QRectF(corner, size);
}

QRectF OrvexLegendTipItem::boundingRect() const
{
    return m_shown ? tipRect().adjusted(-1, -1, 1, 1) : QRectF();
}

void OrvexLegendTipItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (!m_shown)
        return;
    const QRectF box = tipRect();
    painter->save();
    painter->setPen(QColor(120, 120, 120));
    painter->setBrush(QColor(255, 255, 225));
    painter->drawRect(box);
    painter->setFont(m_view->getConfiguration().font("Legend"));
    painter->setPen(Qt::black);
    painter->drawText(box.adjusted(4, 3, -4, -3), Qt::AlignLeft | Qt::AlignTop, m_text);
    painter->restore();
}

} // namespace Gui::Widget
