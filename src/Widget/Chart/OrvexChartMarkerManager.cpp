#include "Widget/Chart/OrvexChartMarkerManager.h"

#include "Script/OrvexQtUIBasePythonUtility.h"
#include "Widget/Chart/ChartMarkerGroup.h"
#include "Widget/Chart/HorizontalLineMarker.h"
#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/PointMarker.h"
#include "Widget/Chart/VerticalLineMarker.h"

#include <QLineF>
#include <fmt/format.h>
#include <QUuid>

#include <limits>

namespace Gui::Widget {

namespace {

constexpr double kBindDistance = 10.0;

// Same form as the coordinates of "add_marker".
std::string positionText(const QPointF& p)
{
    return fmt::format("[{0:f},{1:f}]", p.x(), p.y());
}

} // namespace

OrvexChartMarkerManager::OrvexChartMarkerManager(OrvexChartView* view) : m_view(view)
{
    initializeCursor();
}

OrvexChartMarkerManager::~OrvexChartMarkerManager() = default;

void OrvexChartMarkerManager::initializeCursor()
{
    m_addingCursor = QCursor(Qt::CrossCursor);
    m_hoverCursor = QCursor(Qt::OpenHandCursor);
    m_dragCursor = QCursor(Qt::ClosedHandCursor);
}

std::shared_ptr<ChartMarkerGroup> OrvexChartMarkerManager::createGroup(std::string id)
{
    if (id.empty())
        id = QUuid::createUuid().toString().toStdString();
    if (auto existing = getGroup(id))
        return existing;
    auto group = std::make_shared<ChartMarkerGroup>(shared_from_this(), id);
    m_groups.push_back(group);
    return group;
}

std::shared_ptr<ChartMarkerGroup> OrvexChartMarkerManager::getGroup(const std::string& id) const
{
    for (const auto& group : m_groups) {
        if (group->id() == id)
            return group;
    }
    return nullptr;
}

bool OrvexChartMarkerManager::removeGroup(const std::string& id)
{
    for (auto it = m_groups.begin(); it != m_groups.end(); ++it) {
        if ((*it)->id() == id) {
            (*it)->removeAll();
            m_groups.erase(it);
            emit markersChanged();
            return true;
        }
    }
    return false;
}

std::shared_ptr<ChartMarkerGroup> OrvexChartMarkerManager::getCurrentGroup() const
{
    return getGroup(m_currentGroupId);
}

void OrvexChartMarkerManager::setCurrentGroup(const std::string& id)
{
    m_currentGroupId = id;
    emit markersChanged();
}

std::shared_ptr<Marker> OrvexChartMarkerManager::createMarker(const QPointF& data, MarkerType type, std::string id)
{
    auto group = getCurrentGroup();
    if (!group) {
        group = createGroup("default");
        m_currentGroupId = group->id();
    }
    if (id.empty())
        id = QUuid::createUuid().toString().toStdString();
    std::shared_ptr<Marker> marker;
    switch (type) {
    case MarkerType::PointMarker: marker = std::make_shared<PointMarker>(data, group, id); break;
    case MarkerType::HorizontalLineMarker: marker = std::make_shared<HorizontalLineMarker>(data, group, id); break;
    case MarkerType::VerticalLineMarker: marker = std::make_shared<VerticalLineMarker>(data, group, id); break;
    }
    watch(marker.get());
    group->addMarker(marker);
    m_lastAdded = marker;
    emit markersChanged();
    return marker;
}

void OrvexChartMarkerManager::watch(Marker* marker)
{
    connect(marker, &Marker::dataChanged, this, &OrvexChartMarkerManager::markersChanged);
}

std::shared_ptr<Marker> OrvexChartMarkerManager::addMarker(QPointF data)
{
    auto marker = createMarker(data, m_addingType, std::string());
    recordAdded(marker);
    return marker;
}

void OrvexChartMarkerManager::recordAdded(const std::shared_ptr<Marker>& marker)
{
    if (!m_view)
        return;
    using Python::QtUIPysUtils;
    const std::string chart = m_view->variableName();
    const std::string label = QtUIPysUtils::pyString(marker->label());
    const auto* point = dynamic_cast<const PointMarker*>(marker.get());
    QtUIPysUtils::addMarker(std::string(), chart, label, marker->data(), marker->type(),
                            point ? point->symbol() : None);
    QtUIPysUtils::getMarker(marker->variableName(), chart, label);
}

void OrvexChartMarkerManager::insertMarker(std::shared_ptr<Marker> marker, const std::string& groupId)
{
    if (!marker)
        return;
    auto group = createGroup(groupId);
    watch(marker.get());
    group->addMarker(marker);
    emit markersChanged();
}

std::shared_ptr<Marker> OrvexChartMarkerManager::getMarker(const std::string& id) const
{
    for (const auto& group : m_groups) {
        if (auto marker = group->getMarker(id))
            return marker;
    }
    return nullptr;
}

std::shared_ptr<Marker> OrvexChartMarkerManager::getMarkerByTitle(const std::string& label) const
{
    for (const auto& group : m_groups) {
        if (auto marker = group->getMarkerByTitle(label))
            return marker;
    }
    return nullptr;
}

std::vector<std::shared_ptr<Marker>> OrvexChartMarkerManager::allMarkers() const
{
    std::vector<std::shared_ptr<Marker>> markers;
    for (const auto& group : m_groups)
        markers.insert(markers.end(), group->getAllMarkers().begin(), group->getAllMarkers().end());
    return markers;
}

bool OrvexChartMarkerManager::deleteMarker(const std::string& id)
{
    for (const auto& group : m_groups) {
        if (const auto marker = group->getMarker(id)) {
            disconnect(marker.get(), nullptr, this, nullptr);
            group->removeMarker(id);
            if (m_hovered.lock() == marker)
                m_hovered.reset();
            if (m_dragged.lock() == marker) {
                m_dragged.reset();
                m_state = MarkerState::Idle;
            }
            emit markersChanged();
            return true;
        }
    }
    return false;
}

bool OrvexChartMarkerManager::deleteHoveredMarker()
{
    const auto hovered = m_hovered.lock();
    return hovered && deleteMarker(hovered->id());
}

void OrvexChartMarkerManager::clear()
{
    for (const auto& group : m_groups) {
        for (const auto& marker : group->getAllMarkers())
            disconnect(marker.get(), nullptr, this, nullptr);
        group->removeAll();
    }
    m_hovered.reset();
    m_dragged.reset();
    m_state = MarkerState::Idle;
    emit markersChanged();
}

void OrvexChartMarkerManager::beginAddingMarker(MarkerType type)
{
    m_addingType = type;
    m_state = MarkerState::Adding;
    setCursorStyle();
}

bool OrvexChartMarkerManager::bindMarker()
{
    return bindMarker(m_lastAdded.lock());
}

bool OrvexChartMarkerManager::bindMarker(const std::shared_ptr<Marker>& marker)
{
    if (!marker || !m_view)
        return false;
    const QPointF scenePos = marker->position();
    const auto [point, curveId] = m_view->findClosestPointInAllCurves(scenePos);
    if (curveId.empty() || QLineF(m_view->valueToScene(point), scenePos).length() > kBindDistance)
        return false;
    marker->attach(curveId);
    moveMarker(marker, marker->type() == MarkerType::PointMarker ? point : marker->data());
    return true;
}

void OrvexChartMarkerManager::cleanState()
{
    m_state = MarkerState::Idle;
    m_dragged.reset();
    setCursorStyle();
}

std::shared_ptr<Marker> OrvexChartMarkerManager::findClosestMarker(QPointF scenePos)
{
    std::shared_ptr<Marker> best;
    double bestDistance = std::numeric_limits<double>::max();
    for (const auto& marker : allMarkers()) {
        marker->setHighlight(false);
        if (!marker->visible() || !marker->getHintRect().contains(scenePos))
            continue;
        const double distance = QLineF(marker->position(), scenePos).length();
        if (distance < bestDistance) {
            bestDistance = distance;
            best = marker;
        }
    }
    if (best)
        best->setHighlight(true);
    m_hovered = best;
    return best;
}

void OrvexChartMarkerManager::moveMarker(const std::shared_ptr<Marker>& marker, const QPointF& data)
{
    QPointF target = data;
    if (marker->attached() && m_view) {
        if (marker->type() == MarkerType::PointMarker) {
            QPointF onCurve;
            if (m_view->findClosestPointInCurve(m_view->valueToScene(data), marker->curveId(), onCurve))
                target = onCurve;
        } else {
            m_view->lineIntersectCurve(target, marker->type(), marker->curveId());
        }
    }
    marker->setData(target);
    marker->calculateRelativeValue(target);
}

bool OrvexChartMarkerManager::handleMousePressEvent(const QPointF& scenePos)
{
    if (!m_view)
        return false;
    if (m_state == MarkerState::Adding) {
        addMarker(m_view->sceneToValue(scenePos));
        bindMarker();
        cleanState();
        return true;
    }
    const auto hovered = findClosestMarker(scenePos);
    if (!hovered)
        return false;
    m_dragged = hovered;
    m_state = MarkerState::Dragging;
    setCursorStyle();
    return true;
}

bool OrvexChartMarkerManager::handleMouseMoveEvent(const QPointF& scenePos)
{
    if (!m_view)
        return false;
    if (m_state == MarkerState::Dragging) {
        if (const auto marker = m_dragged.lock())
            moveMarker(marker, m_view->sceneToValue(scenePos));
        return true;
    }
    if (m_state == MarkerState::Idle)
        findClosestMarker(scenePos);
    setCursorStyle();
    return false;
}

bool OrvexChartMarkerManager::handleMouseReleaseEvent(const QPointF& scenePos)
{
    Q_UNUSED(scenePos)
    if (m_state != MarkerState::Dragging)
        return false;
    const auto marker = m_dragged.lock();
    cleanState();
    if (marker && m_view) {
        using Python::QtUIPysUtils;
        const QPointF p = marker->data();
        QtUIPysUtils::setMarkerProperty(m_view->variableName(), QtUIPysUtils::pyString(marker->label()),
                                        "'position'", positionText(p));
    }
    return true;
}

void OrvexChartMarkerManager::refreshAllMarkersPosition()
{
    for (const auto& marker : allMarkers()) {
        if (marker->attached() && !marker->curve())
            marker->detach();
        if (marker->attached())
            moveMarker(marker, marker->data());
        else
            marker->calculateRelativeValue(marker->data());
    }
    emit markersChanged();
}

void OrvexChartMarkerManager::setCursorStyle()
{
    if (!m_view)
        return;
    QWidget* target = m_view->viewport();
    switch (m_state) {
    case MarkerState::Adding: target->setCursor(m_addingCursor); break;
    case MarkerState::Dragging: target->setCursor(m_dragCursor); break;
    case MarkerState::Idle:
        if (m_hovered.lock())
            target->setCursor(m_hoverCursor);
        else
            target->unsetCursor();
        break;
    }
}

} // namespace Gui::Widget
