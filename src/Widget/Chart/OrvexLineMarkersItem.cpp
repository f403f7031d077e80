#include "Widget/Chart/OrvexLineMarkersItem.h"

#include "Widget/Chart/LineMarker.h"
#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/OrvexChartView.h"

#include <QPainter>

#include <cmath>

namespace Gui::Widget {

OrvexLineMarkersItem::OrvexLineMarkersItem(OrvexChartView* view) : OrvexChartOverlayItem(view)
{
    setZValue(20);
}

void OrvexLineMarkersItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    const QRectF area = m_view->plotArea();
    for (const auto& marker : m_view->getMarkerManager()->allMarkers()) {
        const auto* line = dynamic_cast<const LineMarker*>(marker.get());
        if (!line || !marker->visible())
            continue;
        const QPointF p = marker->position();
        painter->save();
        painter->setClipRect(area.adjusted(-1, -1, 1, 1));
        painter->setPen(QPen(marker->color(), marker->weight(), line->style()));
        painter->setBrush(Qt::NoBrush);
        const bool horizontal = marker->type() == MarkerType::HorizontalLineMarker;
        if (m_view->isPolarChart()) {
            const QPointF centre = area.center();
            if (horizontal) {
                const double r = QLineF(centre, p).length();
                painter->drawEllipse(centre, r, r);
            } else {
                const QPointF end = m_view->valueToScene(QPointF(marker->data().x(), m_view->getRangeMagnitude().second));
                painter->drawLine(centre, end);
            }
        } else if (horizontal) {
            painter->drawLine(QPointF(area.left(), p.y()), QPointF(area.right(), p.y()));
        } else {
            painter->drawLine(QPointF(p.x(), area.top()), QPointF(p.x(), area.bottom()));
        }
        painter->restore();
        drawHintBox(painter, *marker);
    }
}

} // namespace Gui::Widget
