#include "Widget/Chart/OrvexLegendManipulator.h"

#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexLegendItem.h"

#include <QLineF>

namespace Gui::Widget {

namespace {

constexpr double kDragThreshold = 3;

} // namespace

OrvexLegendManipulator::OrvexLegendManipulator(OrvexChartView* view) : QObject(view), m_view(view)
{
    setLegend(view->legendItem());
}

void OrvexLegendManipulator::setLegend(OrvexLegendItem* legend)
{
    m_legend = legend;
    m_pressed = false;
}

bool OrvexLegendManipulator::handlePress(const QPointF& scenePos)
{
    if (!m_legend || !m_legend->isVisible() || !m_legend->legendRect().contains(scenePos))
        return false;
    m_pressed = true;
    m_moved = false;
    m_pressPos = scenePos;
    m_grabOffset = scenePos - m_legend->legendRect().topLeft();
    return true;
}

bool OrvexLegendManipulator::handleMove(const QPointF& scenePos)
{
    if (!m_pressed || !m_legend)
        return false;
    if (!m_moved && QLineF(m_pressPos, scenePos).length() <= kDragThreshold)
        return true;
    m_moved = true;
    m_legend->setFloatingTopLeft(scenePos - m_grabOffset);
    return true;
}

bool OrvexLegendManipulator::handleRelease(const QPointF& scenePos)
{
    Q_UNUSED(scenePos)
    if (!m_pressed)
        return false;
    m_pressed = false;
    return true;
}

bool OrvexLegendManipulator::handleDoubleClick(const QPointF& scenePos)
{
    if (!m_legend || !m_legend->isVisible() || !m_legend->legendRect().contains(scenePos))
        return false;
    m_pressed = false;
    m_legend->setDocked(!m_legend->docked());
    return true;
}

QString OrvexLegendManipulator::tipText() const
{
    return m_legend && !m_legend->docked() ? QStringLiteral("Double left click to dock")
                                           : QStringLiteral("Double left click to float");
}

} // namespace Gui::Widget
