#include "Widget/Chart/OrvexPointMarkersItem.h"

#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/PointMarker.h"

#include <QPainter>

namespace Gui::Widget {

OrvexPointMarkersItem::OrvexPointMarkersItem(OrvexChartView* view) : OrvexChartOverlayItem(view)
{
    setZValue(21);
}

void OrvexPointMarkersItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    for (const auto& marker : m_view->getMarkerManager()->allMarkers()) {
        const auto* point = dynamic_cast<const PointMarker*>(marker.get());
        if (!point || !marker->visible())
            continue;
        const QPointF p = marker->position();
        QFont font = m_view->getConfiguration().font("Markers");
        font.setPixelSize(std::max(4, static_cast<int>(point->symbolSize() * 2)));
        painter->save();
        painter->setFont(font);
        painter->setPen(marker->color());
        const double half = point->symbolSize() * 2;
        painter->drawText(QRectF(p - QPointF(half, half), QSizeF(2 * half, 2 * half)), Qt::AlignCenter,
                          point->symbolString());
        painter->restore();
        drawHintBox(painter, *marker);
    }
}

} // namespace Gui::Widget
