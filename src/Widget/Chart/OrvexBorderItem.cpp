#include "Widget/Chart/OrvexBorderItem.h"

#include "Widget/Chart/OrvexChartView.h"

#include <QPainter>
#include <QtCharts/QValueAxis>

namespace Gui::Widget {

OrvexBorderItem::OrvexBorderItem(OrvexChartView* view) : OrvexChartOverlayItem(view)
{
    setZValue(4);
}

void OrvexBorderItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (m_view->isPolarChart() || !m_view->axisX())
        return;
    painter->save();
    painter->setPen(m_view->axisX()->linePen());
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(m_view->plotArea());
    painter->restore();
}

} // namespace Gui::Widget
