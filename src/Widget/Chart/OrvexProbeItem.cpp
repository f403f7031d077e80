#include "Widget/Chart/OrvexProbeItem.h"

#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QFontMetricsF>
#include <QPainter>

namespace Gui::Widget {

namespace {

constexpr double kBoxOffset = 10;
constexpr double kCrossHalf = 5;
constexpr int kTransparentAlpha = 160;

} // namespace

OrvexProbeItem::OrvexProbeItem(OrvexChartView* view) : OrvexChartOverlayItem(view)
{
    setZValue(30);
}

void OrvexProbeItem::setProbe(const QPointF& data, const std::string& curveId)
{
    m_active = true;
    m_data = data;
    m_curveId = curveId;
    refresh();
}

void OrvexProbeItem::clearProbe()
{
    if (!m_active)
        return;
    m_active = false;
    m_curveId.clear();
    refresh();
}

void OrvexProbeItem::refresh()
{
    if (m_active)
        m_point = m_view->valueToScene(m_data);
    OrvexChartOverlayItem::refresh();
}

bool OrvexProbeItem::isShown() const
{
    return m_active && m_view->plotArea().contains(m_point);
}

QStringList OrvexProbeItem::texts() const
{
    const auto curve = m_view->getCurveManager()->getCurve(m_curveId);
    auto number = [](double v) { return QString::number(v, 'g', 6); };
    QStringList lines;
    if (m_view->isPolarChart()) {
        lines << QStringLiteral(" Mag = %1 ").arg(number(m_data.y()))
              << QStringLiteral(" Ang = %1 (Deg) ").arg(number(m_data.x()));
    } else {
        lines << QStringLiteral(" X = %1 ").arg(number(m_data.x())) + QString::fromStdString(curve ? curve->xUnit() : "")
              << QStringLiteral(" Y = %1 ").arg(number(m_data.y())) + QString::fromStdString(curve ? curve->yUnit() : "");
    }
    if (m_view->namesInLabels() && curve)
        lines << QString::fromStdString(curve->label());
    return lines;
}

QRectF OrvexProbeItem::boxRect() const
{
    const QFontMetricsF metrics(m_view->getConfiguration().font("Markers"));
    const QStringList lines = texts();
    const double width = std::max(metrics.horizontalAdvance(lines.value(0)), metrics.horizontalAdvance(lines.value(1))) + 10;
    const double height = metrics.height() * (lines.size() > 2 ? 3.2 : 2.2);
    const QRectF area = m_view->plotArea();
    QPointF corner = m_point + QPointF(kBoxOffset, kBoxOffset);
    if (corner.x() + width > area.right())
        corner.setX(m_point.x() - kBoxOffset - width);
    if (corner.y() + height > area.bottom())
        corner.setY(m_point.y() - kBoxOffset - height);
    return QRectF(corner, QSizeF(width, height));
}

QLineF OrvexProbeItem::connectorLine() const
{
    if (!m_view->drawConnector())
        return QLineF();
    const QRectF box = boxRect();
    // The corner facing the point: flipped boxes lie left of / above it.
    const double x = box.left() < m_point.x() ? box.right() : box.left();
    const double y = box.top() < m_point.y() ? box.bottom() : box.top();
    return QLineF(m_point, QPointF(x, y));
}

void OrvexProbeItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (!isShown())
        return;
    const auto curve = m_view->getCurveManager()->getCurve(m_curveId);
    const auto& configuration = m_view->getConfiguration();
    const QFont font = configuration.font("Markers");
    const QFontMetricsF metrics(font);
    const QRectF box = boxRect();

    QColor fill(Qt::white);
    if (m_view->transparentBackground())
        fill.setAlpha(kTransparentAlpha);
    painter->save();
    painter->setPen(Qt::NoPen);
    painter->setBrush(fill);
    painter->drawRect(box);

    painter->setFont(font);
    painter->setPen(m_view->matchTextColorToLine() && curve ? curve->color() : configuration.color("Markers"));
    double baseline = box.top() + metrics.height() * 0.1 + metrics.ascent();
    for (const QString& line : texts()) {
        painter->drawText(QPointF(box.left() + 5, baseline), line);
        baseline += metrics.height();
    }

    painter->setPen(QPen(Qt::black, 1));
    painter->drawLine(m_point - QPointF(kCrossHalf, 0), m_point + QPointF(kCrossHalf, 0));
    painter->drawLine(m_point - QPointF(0, kCrossHalf), m_point + QPointF(0, kCrossHalf));
    const QLineF connector = connectorLine();
    if (!connector.isNull())
        painter->drawLine(connector);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(box);
    painter->restore();
}

} // namespace Gui::Widget
