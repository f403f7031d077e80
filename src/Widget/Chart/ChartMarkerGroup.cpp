#include "Widget/Chart/ChartMarkerGroup.h"

#include "Widget/Chart/Marker.h"

#include <algorithm>

namespace Gui::Widget {

ChartMarkerGroup::ChartMarkerGroup(std::shared_ptr<OrvexChartMarkerManager> manager, std::string id)
    : m_manager(manager), m_id(std::move(id))
{
}

ChartMarkerGroup::~ChartMarkerGroup() = default;

void ChartMarkerGroup::addMarker(std::shared_ptr<Marker> marker)
{
    if (!marker)
        return;
    marker->setGroup(shared_from_this());
    m_markers.push_back(marker);
    emit markerAdded(marker.get());
}

std::shared_ptr<Marker> ChartMarkerGroup::getMarker(const std::string& id) const
{
    const auto it = std::find_if(m_markers.begin(), m_markers.end(), [&](const auto& m) { return m->id() == id; });
    return it == m_markers.end() ? nullptr : *it;
}

std::shared_ptr<Marker> ChartMarkerGroup::getMarkerByTitle(const std::string& label) const
{
    const auto it =
        std::find_if(m_markers.begin(), m_markers.end(), [&](const auto& m) { return m->label() == label; });
    return it == m_markers.end() ? nullptr : *it;
}

bool ChartMarkerGroup::removeMarker(const std::string& id)
{
    const auto it = std::find_if(m_markers.begin(), m_markers.end(), [&](const auto& m) { return m->id() == id; });
    if (it == m_markers.end())
        return false;
    const auto marker = *it;
    emit markerRemoving(marker.get());
    m_markers.erase(std::find(m_markers.begin(), m_markers.end(), marker));
    return true;
}

void ChartMarkerGroup::removeAll()
{
    while (!m_markers.empty())
        removeMarker(m_markers.back()->id());
}

} // namespace Gui::Widget
