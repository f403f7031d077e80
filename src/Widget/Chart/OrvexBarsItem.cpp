#include "Widget/Chart/OrvexBarsItem.h"

#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QPainter>
#include <QtCharts/QLineSeries>

#include <algorithm>

namespace Gui::Widget {

OrvexBarsItem::OrvexBarsItem(OrvexChartView* view) : OrvexChartOverlayItem(view)
{
    setZValue(5);
}

void OrvexBarsItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (m_view->getViewType() != OrvexChartView::Bar)
        return;
    const QRectF area = m_view->plotArea();
    const double zero = m_view->useYLog() ? area.bottom() : m_view->valueToScene(QPointF(0, 0)).y();
    const double baseline = std::clamp(zero, area.top(), area.bottom());
    painter->save();
    painter->setClipRect(area);
    for (const auto& group : m_view->getCurveManager()->getAllGroups(true)) {
        for (const auto& curve : group->getAllCurves(true)) {
            const auto* series = m_view->seriesOf(curve->id());
            if (!series)
                continue;
            painter->setPen(QPen(curve->color(), 1));
            painter->setBrush(curve->color());
            const double width = std::max(1, curve->barWidth());
            for (const QPointF& value : series->pointsVector()) {
                const QPointF p = m_view->valueToScene(value);
                painter->drawRect(QRectF(QPointF(p.x() - width / 2, std::min(p.y(), baseline)),
                                         QPointF(p.x() + width / 2, std::max(p.y(), baseline))));
            }
        }
    }
    painter->restore();
}

} // namespace Gui::Widget
