#pragma once

#include "OrvexQtUIBase_export.h"

#include <QObject>

#include <memory>
#include <string>
#include <vector>

namespace Gui::Widget {

class Marker;
class OrvexChartMarkerManager;

/**
 * A named set of markers, owned by the chart's marker manager, which it
 * knows through a weak pointer. Markers keep the order they were added in;
 * adding one points its group link here. Visible by default.
 */
class ORVEXQTUIBASE_EXPORT ChartMarkerGroup : public QObject, public std::enable_shared_from_this<ChartMarkerGroup>
{
    Q_OBJECT

public:
    ChartMarkerGroup(std::shared_ptr<OrvexChartMarkerManager> manager, std::string id);
    ~ChartMarkerGroup() override;

    const std::string& id() const { return m_id; }
    std::weak_ptr<OrvexChartMarkerManager> manager() const { return m_manager; }

    void addMarker(std::shared_ptr<Marker> marker);
    std::shared_ptr<Marker> getMarker(const std::string& id) const;
    std::shared_ptr<Marker> getMarkerByTitle(const std::string& label) const;
    const std::vector<std::shared_ptr<Marker>>& getAllMarkers() const { return m_markers; }
    bool removeMarker(const std::string& id);
    void removeAll();
    std::size_t size() const { return m_markers.size(); }

    bool visible() const { return m_visible; }
    void setVisible(bool visible) { m_visible = visible; }

signals:
    void markerAdded(Marker* marker);
    void markerRemoving(Marker* marker);

private:
    std::weak_ptr<OrvexChartMarkerManager> m_manager;
    std::string m_id;
    std::vector<std::shared_ptr<Marker>> m_markers;
    bool m_visible = true;
};

} // namespace Gui::Widget
