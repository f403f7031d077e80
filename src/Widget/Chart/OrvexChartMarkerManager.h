#pragma once

#include "OrvexQtUIBase_export.h"
#include "Widget/Chart/ChartMarkerTypes.h"

#include <QCursor>
#include <QObject>
#include <QPointF>

#include <memory>
#include <string>
#include <vector>

namespace Gui::Widget {

class ChartMarkerGroup;
class Marker;
class OrvexChartView;

/// Interaction state of the marker manager.
enum class MarkerState { Idle = 0, Adding = 1, Dragging = 2 };

/**
 * Owner of a chart's marker groups and the mouse interaction with markers.
 *
 * Made by the chart view, which keeps it in a `std::shared_ptr`; the manager
 * keeps a plain pointer back to the view. A group "default" is made (and
 * made current) when a marker is created without a current group.
 *
 * Interaction: `beginAddingMarker(type)` arms the manager (state Adding); the
 * next press adds a marker of that type at the press point in the current
 * group, binds it to a curve within 10 px and returns to Idle. A press on the
 * hovered marker starts a drag (state Dragging), moves update its data
 * (attached markers stay on their curve) and the release ends it.
 * Positions handed to the mouse handlers are scene positions. Adding a
 * marker records "add_marker" and "get_marker" Python statements.
 */
class ORVEXQTUIBASE_EXPORT OrvexChartMarkerManager : public QObject,
                                                     public std::enable_shared_from_this<OrvexChartMarkerManager>
{
    Q_OBJECT

public:
    explicit OrvexChartMarkerManager(OrvexChartView* view);
    ~OrvexChartMarkerManager() override;

    OrvexChartView* view() const { return m_view; }

    std::shared_ptr<ChartMarkerGroup> createGroup(std::string id);
    std::shared_ptr<ChartMarkerGroup> getGroup(const std::string& id) const;
    const std::vector<std::shared_ptr<ChartMarkerGroup>>& getAllGroups() const { return m_groups; }
    bool removeGroup(const std::string& id);
    std::shared_ptr<ChartMarkerGroup> getCurrentGroup() const;
    void setCurrentGroup(const std::string& id);

    /// A marker of @p type at @p data (data coordinates) in the current group.
    std::shared_ptr<Marker> createMarker(const QPointF& data, MarkerType type, std::string id);
    /// Adds a marker of the armed type at @p data and records it.
    std::shared_ptr<Marker> addMarker(QPointF data);
    void insertMarker(std::shared_ptr<Marker> marker, const std::string& groupId);
    std::shared_ptr<Marker> getMarker(const std::string& id) const;
    std::shared_ptr<Marker> getMarkerByTitle(const std::string& label) const;
    /// Every marker of every group, in order.
    std::vector<std::shared_ptr<Marker>> allMarkers() const;
    bool deleteMarker(const std::string& id);
    bool deleteHoveredMarker();
    void clear();

    void beginAddingMarker(MarkerType type);
    /// Attaches the last added marker to the nearest curve within 10 px.
    bool bindMarker();
    /// Attaches @p marker to the nearest curve within 10 px.
    bool bindMarker(const std::shared_ptr<Marker>& marker);
    void cleanState();
    MarkerState state() const { return m_state; }
    MarkerType addingType() const { return m_addingType; }
    std::shared_ptr<Marker> getHoveredMarker() const { return m_hovered.lock(); }
    std::shared_ptr<Marker> getDraggedMarker() const { return m_dragged.lock(); }
    /// Clears every highlight, then highlights and hovers the marker whose
    /// hint box contains @p scenePos (the nearest of several), if any.
    std::shared_ptr<Marker> findClosestMarker(QPointF scenePos);

    /// Answer whether the event was taken.
    bool handleMousePressEvent(const QPointF& scenePos);
    bool handleMouseMoveEvent(const QPointF& scenePos);
    bool handleMouseReleaseEvent(const QPointF& scenePos);

    /// Puts attached markers back on their curves; detaches markers whose
    /// curve is gone.
    void refreshAllMarkersPosition();
    /// Moves @p marker to where @p data lands (on its curve when attached).
    void moveMarker(const std::shared_ptr<Marker>& marker, const QPointF& data);
    void setCursorStyle();

signals:
    /// Any marker was added, removed or changed.
    void markersChanged();

protected:
    void initializeCursor();

private:
    void watch(Marker* marker);
    void recordAdded(const std::shared_ptr<Marker>& marker);

    OrvexChartView* m_view;
    std::vector<std::shared_ptr<ChartMarkerGroup>> m_groups;
    std::string m_currentGroupId;
    MarkerState m_state = MarkerState::Idle;
    MarkerType m_addingType = MarkerType::PointMarker;
    std::weak_ptr<Marker> m_hovered;
    std::weak_ptr<Marker> m_dragged;
    std::weak_ptr<Marker> m_lastAdded;
    QCursor m_addingCursor;
    QCursor m_hoverCursor;
    QCursor m_dragCursor;
};

} // namespace Gui::Widget
