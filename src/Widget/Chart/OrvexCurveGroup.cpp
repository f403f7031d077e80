#include "Widget/Chart/OrvexCurveGroup.h"

#include "Widget/Chart/OrvexCurve.h"

#include <QUuid>

#include <algorithm>
#include <limits>

namespace Gui::Widget {

namespace {

constexpr std::pair<double, double> kEmptyRange{std::numeric_limits<double>::max(),
                                                std::numeric_limits<double>::lowest()};

void widen(std::pair<double, double>& range, double low, double high)
{
    range.first = std::min(range.first, low);
    range.second = std::max(range.second, high);
}

} // namespace

OrvexCurveGroup::OrvexCurveGroup(std::shared_ptr<OrvexCurveManager> manager, std::string id)
    : m_manager(manager)
    , m_id(std::move(id))
{
}

OrvexCurveGroup::~OrvexCurveGroup() = default;

std::shared_ptr<OrvexCurve> OrvexCurveGroup::createCurve(std::string id)
{
    auto curve = std::make_shared<OrvexCurve>(shared_from_this(), std::move(id));
    addCurve(curve);
    return curve;
}

void OrvexCurveGroup::addCurve(std::shared_ptr<OrvexCurve>& curve)
{
    if (!curve)
        return;
    const std::size_t existing = indexOf(curve->id());
    if (existing < m_curves.size()) {
        if (m_curves[existing] == curve)
            return;
        dropCurve(existing);
    }
    curve->setGroup(shared_from_this());
    m_curves.push_back(curve);
    invalidateRawRange();
    connect(curve.get(), &OrvexCurve::dataChanged, this, &OrvexCurveGroup::afterCurveDataChanged);
    connect(curve.get(), &OrvexCurve::visibilityChanged, this, &OrvexCurveGroup::afterCurveVisibilityChanged);
    emit curveAdded(curve.get());
}

std::size_t OrvexCurveGroup::indexOf(const std::string& id) const
{
    const auto it = std::find_if(m_curves.begin(), m_curves.end(), [&](const auto& c) { return c->id() == id; });
    return static_cast<std::size_t>(it - m_curves.begin());
}

std::shared_ptr<OrvexCurve> OrvexCurveGroup::getCurve(const std::string& id) const
{
    const std::size_t index = indexOf(id);
    return index < m_curves.size() ? m_curves[index] : nullptr;
}

std::shared_ptr<OrvexCurve> OrvexCurveGroup::getCurveByTitle(const std::string& title) const
{
    const auto it =
        std::find_if(m_curves.begin(), m_curves.end(), [&](const auto& c) { return c->title() == title; });
    return it == m_curves.end() ? nullptr : *it;
}

std::vector<std::shared_ptr<OrvexCurve>> OrvexCurveGroup::getAllCurves(bool visibleOnly) const
{
    std::vector<std::shared_ptr<OrvexCurve>> result;
    std::copy_if(m_curves.begin(), m_curves.end(), std::back_inserter(result),
                 [&](const auto& c) { return !visibleOnly || c->visible(); });
    return result;
}

std::vector<std::string> OrvexCurveGroup::curveIds() const
{
    std::vector<std::string> ids;
    ids.reserve(m_curves.size());
    for (const auto& curve : m_curves)
        ids.push_back(curve->id());
    return ids;
}

void OrvexCurveGroup::dropCurve(std::size_t index)
{
    // Keep the curve alive through the signals even if a listener drops
    // the last other reference.
    const auto curve = m_curves[index];
    emit curve->beforeCurveDeleted();
    emit curveRemoving(curve.get());
    disconnect(curve.get(), nullptr, this, nullptr);
    m_curves.erase(m_curves.begin() + static_cast<std::ptrdiff_t>(index));
    // The curve may live on elsewhere; it no longer counts towards our range.
    if (curve->group().lock().get() == this)
        curve->setGroup(nullptr);
    invalidateRawRange();
}

bool OrvexCurveGroup::removeCurve(const std::string& id)
{
    const std::size_t index = indexOf(id);
    if (index >= m_curves.size())
        return false;
    dropCurve(index);
    return true;
}

void OrvexCurveGroup::removeAll()
{
    while (!m_curves.empty())
        dropCurve(m_curves.size() - 1);
}

QSet<unsigned int> OrvexCurveGroup::colorsOccupied() const
{
    QSet<unsigned int> colors;
    for (const auto& curve : m_curves)
        colors.insert(curve->color().rgba());
    return colors;
}

void OrvexCurveGroup::setCustomSymbol(const std::string& symbol)
{
    m_customSymbol = symbol;
}

void OrvexCurveGroup::setVisible(bool visible)
{
    m_visible = visible;
}

std::pair<double, double> OrvexCurveGroup::groupRange(bool xAxis) const
{
    auto range = kEmptyRange;
    for (const auto& curve : m_curves) {
        if (!curve->visible() || curve->dataSize() == 0)
            continue;
        if (xAxis)
            widen(range, curve->xMin(), curve->xMax());
        else
            widen(range, curve->yMin(), curve->yMax());
    }
    return range;
}

std::pair<double, double> OrvexCurveGroup::groupYRawDataRange() const
{
    if (!m_rawRange) {
        auto range = kEmptyRange;
        for (const auto& curve : m_curves) {
            if (curve->dataSize() > 0)
                widen(range, curve->rawYMin(), curve->rawYMax());
        }
        m_rawRange = range;
    }
    return *m_rawRange;
}

void OrvexCurveGroup::setManager(std::shared_ptr<OrvexCurveManager> manager)
{
    m_manager = manager;
}

void OrvexCurveGroup::afterCurveDataChanged()
{
    m_curvesChanged = true;
}

void OrvexCurveGroup::afterCurveVisibilityChanged()
{
    afterCurveDataChanged();
}

} // namespace Gui::Widget
