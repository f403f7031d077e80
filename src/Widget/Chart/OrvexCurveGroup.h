#pragma once

#include "OrvexQtUIBase_export.h"

#include <QObject>
#include <QSet>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Gui::Widget {

class OrvexCurve;
class OrvexCurveManager;

/**
 * A named set of curves that share a colour allocation and a symbol.
 *
 * The group owns its curves (in the order they were added) and knows its
 * manager through a weak pointer. Defaults: visible, empty custom symbol.
 * Adding a curve emits `curveAdded`; removing one first makes the curve emit
 * `beforeCurveDeleted()` and then emits `curveRemoving`. A curve added under
 * an id already present replaces the old curve, which is removed first.
 *
 * The raw Y range of all curves is cached; curves invalidate it when their
 * data change, and adding, removing or moving curves does too.
 */
class ORVEXQTUIBASE_EXPORT OrvexCurveGroup : public QObject, public std::enable_shared_from_this<OrvexCurveGroup>
{
    Q_OBJECT

public:
    OrvexCurveGroup(std::shared_ptr<OrvexCurveManager> manager, std::string id);
    ~OrvexCurveGroup() override;

    const std::string& id() const { return m_id; }

    /// Makes a curve in this group (an empty id becomes a UUID) and adds it.
    std::shared_ptr<OrvexCurve> createCurve(std::string id);
    /// Takes @p curve into this group and points its group link here. A curve
    /// moved from another group must be removed from that one by the caller.
    void addCurve(std::shared_ptr<OrvexCurve>& curve);
    std::shared_ptr<OrvexCurve> getCurve(const std::string& id) const;
    /// The first curve with @p title, or null.
    std::shared_ptr<OrvexCurve> getCurveByTitle(const std::string& title) const;
    /// All curves in order; only the visible ones when @p visibleOnly.
    std::vector<std::shared_ptr<OrvexCurve>> getAllCurves(bool visibleOnly = false) const;
    std::vector<std::string> curveIds() const;
    bool removeCurve(const std::string& id);
    void removeAll();
    std::size_t size() const { return m_curves.size(); }
    /// `QColor::rgba()` of every curve's colour.
    QSet<unsigned int> colorsOccupied() const;

    const std::string& customSymbol() const { return m_customSymbol; }
    void setCustomSymbol(const std::string& symbol);
    bool visible() const { return m_visible; }
    void setVisible(bool visible);

    /**
     * (min, max) over the visible curves in their current data type: of X
     * when @p xAxis, of Y otherwise. Without any data point the answer is
     * (max double, lowest double), so that ranges of several groups merge
     * with std::min/std::max.
     */
    std::pair<double, double> groupRange(bool xAxis) const;
    /// (min, max) of the raw Y of all curves, visible or not; empty as above.
    std::pair<double, double> groupYRawDataRange() const;
    /// Drops the cached raw Y range; curves call it when their data change.
    void invalidateRawRange() { m_rawRange.reset(); }

    std::weak_ptr<OrvexCurveManager> manager() const { return m_manager; }
    void setManager(std::shared_ptr<OrvexCurveManager> manager);

    /// Whether a curve's data or visibility changed since the last clear.
    bool curvesChanged() const { return m_curvesChanged; }
    void clearCurvesChanged() { m_curvesChanged = false; }

public slots:
    void afterCurveDataChanged();
    void afterCurveVisibilityChanged();

signals:
    void beforeGroupDeleted();
    void curveAdded(OrvexCurve* curve);
    void curveRemoving(OrvexCurve* curve);

private:
    void dropCurve(std::size_t index);
    std::size_t indexOf(const std::string& id) const;

    std::weak_ptr<OrvexCurveManager> m_manager;
    std::string m_id;
    std::vector<std::shared_ptr<OrvexCurve>> m_curves;
    std::string m_customSymbol;
    bool m_visible = true;
    bool m_curvesChanged = false;
    mutable std::optional<std::pair<double, double>> m_rawRange;
};

} // namespace Gui::Widget
