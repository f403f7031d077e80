#include "Widget/Chart/OrvexLegendItem.h"

#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QFontMetricsF>
#include <QPainter>

namespace Gui::Widget {

namespace {

constexpr double kMargin = 6;
constexpr double kSwatch = 18;

} // namespace

OrvexLegendItem::OrvexLegendItem(OrvexChartView* view) : OrvexChartOverlayItem(view)
{
    setZValue(25);
}

void OrvexLegendItem::refresh()
{
    prepareGeometryChange();
    m_entries.clear();
    for (const auto& group : m_view->getCurveManager()->getAllGroups(true)) {
        for (const auto& curve : group->getAllCurves(false))
            m_entries.push_back({curve->id(), QString::fromStdString(curve->label()), curve->color(), curve->visible()});
    }
    OrvexChartOverlayItem::refresh();
}

QStringList OrvexLegendItem::labels() const
{
    QStringList result;
    for (const auto& entry : m_entries)
        result << entry.label;
    return result;
}

double OrvexLegendItem::rowHeight() const
{
    return QFontMetricsF(m_view->getConfiguration().font("Legend")).height() + 2;
}

QRectF OrvexLegendItem::legendRect() const
{
    if (m_entries.empty())
        return QRectF();
    const QFontMetricsF metrics(m_view->getConfiguration().font("Legend"));
    double width = 0;
    for (const auto& entry : m_entries)
        width = std::max(width, metrics.horizontalAdvance(entry.label));
    const QSizeF size(width + kSwatch + 3 * kMargin, rowHeight() * m_entries.size() + kMargin);
    if (!m_docked)
        return QRectF(m_floatingTopLeft, size);
    const QRectF area = m_view->plotArea();
    return QRectF(QPointF(area.right() - size.width() - kMargin, area.top() + kMargin), size);
}

QRectF OrvexLegendItem::boundingRect() const
{
    return legendRect().adjusted(-1, -1, 1, 1);
}

int OrvexLegendItem::entryAt(const QPointF& scenePos) const
{
    const QRectF box = legendRect();
    if (!isVisible() || !box.contains(scenePos))
        return -1;
    const int row = static_cast<int>((scenePos.y() - box.top() - kMargin / 2) / rowHeight());
    return row >= 0 && row < static_cast<int>(m_entries.size()) ? row : -1;
}

void OrvexLegendItem::setDocked(bool docked)
{
    prepareGeometryChange();
    if (!docked && m_docked)
        m_floatingTopLeft = legendRect().topLeft();
    m_docked = docked;
    refresh();
}

void OrvexLegendItem::setFloatingTopLeft(const QPointF& topLeft)
{
    prepareGeometryChange();
    m_floatingTopLeft = topLeft;
    m_docked = false;
    OrvexChartOverlayItem::refresh();
}

void OrvexLegendItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    const QRectF box = legendRect();
    if (box.isEmpty())
        return;
    const auto& configuration = m_view->getConfiguration();
    const QFont font = configuration.font("Legend");
    const QFontMetricsF metrics(font);
    painter->save();
    painter->setPen(QPen(QColor(160, 160, 160), 1));
    painter->setBrush(QColor(255, 255, 255, 220));
    painter->drawRect(box);
    painter->setFont(font);
    double top = box.top() + kMargin / 2;
    for (const auto& entry : m_entries) {
        const double middle = top + rowHeight() / 2;
        const QColor color = entry.visible ? entry.color : QColor(190, 190, 190);
        painter->setPen(QPen(color, 3));
        painter->drawLine(QPointF(box.left() + kMargin, middle), QPointF(box.left() + kMargin + kSwatch, middle));
        painter->setPen(entry.visible ? configuration.color("Legend") : QColor(150, 150, 150));
        painter->drawText(QPointF(box.left() + 2 * kMargin + kSwatch, middle - metrics.height() / 2 + metrics.ascent()),
                          entry.label);
        top += rowHeight();
    }
    painter->restore();
}

} // namespace Gui::Widget
