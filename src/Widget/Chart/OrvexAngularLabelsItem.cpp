#include "Widget/Chart/OrvexAngularLabelsItem.h"

#include "Widget/Chart/OrvexChartView.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace Gui::Widget {

OrvexAngularLabelsItem::OrvexAngularLabelsItem(OrvexChartView* view) : OrvexChartOverlayItem(view)
{
    setZValue(6);
}

void OrvexAngularLabelsItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (!m_view->isPolarChart())
        return;
    const int n = std::max(1, static_cast<int>(m_view->getAngularDivisions()));
    const QRectF area = m_view->plotArea();
    const double radius = std::min(area.width(), area.height()) / 2 - 3;
    const auto range = m_view->getRangeAngular();
    const QFont font = m_view->getConfiguration().font("Axes Divisions");
    const QFontMetricsF metrics(font);
    painter->save();
    painter->setOpacity(0.5);
    painter->setFont(font);
    painter->setPen(m_view->getConfiguration().color("Axes Divisions"));
    for (int k = 0; k < n; ++k) {
        const double theta = 2 * M_PI * k / n;
        const double value = range.first + (range.second - range.first) * k / n;
        const QString text = QString::number(value, 'g', 6);
        const QSizeF size(metrics.horizontalAdvance(text), metrics.height());
        // The label's far edge touches the radius, pulled inwards along the ray.
        const QPointF anchor = area.center() + QPointF(radius * std::sin(theta), -radius * std::cos(theta));
        const QPointF centre = anchor - QPointF(std::sin(theta) * size.width() / 2, -std::cos(theta) * size.height() / 2);
        painter->drawText(QRectF(centre - QPointF(size.width() / 2, size.height() / 2), size), Qt::AlignCenter, text);
    }
    painter->restore();
}

} // namespace Gui::Widget
