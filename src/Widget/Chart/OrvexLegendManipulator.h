#pragma once

#include "OrvexQtUIBase_export.h"

#include <QObject>
#include <QPointF>
#include <QString>

namespace Gui::Widget {

class OrvexChartView;
class OrvexLegendItem;

/**
 * Lets the user move the legend: dragging it by more than 3 px floats it and
 * drags it along; a double left click docks a floating legend back into the
 * plot's top-right corner, or floats a docked one where it is. Its tip text
 * says which: "Double left click to float" while docked, "Double left click
 * to dock" while floating. The view hands it its mouse events in scene
 * coordinates; each handler answers whether it took the event.
 */
class ORVEXQTUIBASE_EXPORT OrvexLegendManipulator : public QObject
{
    Q_OBJECT

public:
    explicit OrvexLegendManipulator(OrvexChartView* view);

    void setLegend(OrvexLegendItem* legend);
    OrvexLegendItem* legend() const { return m_legend; }

    bool handlePress(const QPointF& scenePos);
    bool handleMove(const QPointF& scenePos);
    bool handleRelease(const QPointF& scenePos);
    bool handleDoubleClick(const QPointF& scenePos);
    bool dragging() const { return m_pressed; }

    QString tipText() const;

private:
    OrvexChartView* m_view;
    OrvexLegendItem* m_legend = nullptr;
    bool m_pressed = false;
    bool m_moved = false;
    QPointF m_pressPos;
    QPointF m_grabOffset;
};

} // namespace Gui::Widget
