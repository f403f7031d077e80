#include "Widget/Chart/OrvexPolarChartAngularTitleItem.h"

#include "Widget/Chart/OrvexChartView.h"

#include <QFontMetricsF>
#include <QPainter>

namespace Gui::Widget {

OrvexPolarChartAngularTitleItem::OrvexPolarChartAngularTitleItem(OrvexChartView* view) : OrvexChartOverlayItem(view)
{
    setZValue(6);
}

void OrvexPolarChartAngularTitleItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    const QString title = QString::fromStdString(m_view->angularLabel());
    if (!m_view->isPolarChart() || title.isEmpty())
        return;
    const QFont font = m_view->getConfiguration().font("Axes Labels");
    const QFontMetricsF metrics(font);
    const QRectF area = m_view->plotArea();
    painter->save();
    painter->setFont(font);
    painter->setPen(m_view->getConfiguration().color("Axes Labels"));
    const QRectF box(area.left(), area.top() - 2 * metrics.height() - 2, area.width(), metrics.height());
    painter->drawText(box, Qt::AlignHCenter | Qt::AlignBottom, title);
    painter->restore();
}

} // namespace Gui::Widget
