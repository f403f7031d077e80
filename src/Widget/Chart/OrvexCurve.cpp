#include "Widget/Chart/OrvexCurve.h"

#include "Widget/Chart/OrvexCurveDbNormalizedNode.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveLinearNormalizedNode.h"

#include <QUuid>

#include <algorithm>
#include <array>

namespace Gui::Widget {

std::unordered_set<std::string> OrvexCurve::g_existingVariableNames;

namespace {

constexpr std::array<QRgb, OrvexCurve::paletteSize> kPalette = {
    qRgb(255, 160, 122), qRgb(0, 0, 255),     qRgb(0, 255, 0),     qRgb(101, 30, 62),   qRgb(0, 255, 255),
    qRgb(255, 0, 255),   qRgb(37, 30, 62),    qRgb(220, 150, 100), qRgb(42, 183, 202),  qRgb(1, 31, 75),
    qRgb(100, 151, 177), qRgb(179, 205, 224), qRgb(243, 119, 54),  qRgb(230, 230, 234), qRgb(74, 78, 77),
    qRgb(254, 215, 102), qRgb(246, 171, 182), qRgb(3, 146, 207),   qRgb(77, 100, 141),  qRgb(40, 54, 85),
    qRgb(255, 177, 135), qRgb(255, 159, 177), qRgb(255, 222, 138), qRgb(255, 151, 246), qRgb(159, 220, 255),
    qRgb(145, 255, 246), qRgb(85, 85, 127),   qRgb(190, 62, 81),   qRgb(190, 148, 41),  qRgb(122, 12, 190),
};

const std::vector<double> kNoData;

} // namespace

OrvexCurve::OrvexCurve(std::shared_ptr<OrvexCurveGroup> group, std::string id)
    : m_id(std::move(id))
{
    if (m_id.empty())
        m_id = QUuid::createUuid().toString().toStdString();
    initTransformNodes();
    setGroup(std::move(group));
    setRandColor();
}

OrvexCurve::~OrvexCurve() = default;

QColor OrvexCurve::paletteColor(int index)
{
    const int entry = ((index % paletteSize) + paletteSize) % paletteSize;
    return QColor::fromRgba(kPalette[static_cast<std::size_t>(entry)]);
}

void OrvexCurve::initTransformNodes()
{
    m_transformNodes = std::make_shared<std::map<OrvexCurveDataType, std::shared_ptr<OrvexCurveTransformNode>>>();
    (*m_transformNodes)[OrvexCurveDataType::DbNormalizedData] = std::make_shared<OrvexCurveDbNormalizedNode>(this);
    (*m_transformNodes)[OrvexCurveDataType::LinearNormalizedData] =
        std::make_shared<OrvexCurveLinearNormalizedNode>(this);
}

void OrvexCurve::setRandColor()
{
    const auto group = m_group.lock();
    if (!group)
        return;
    const std::size_t n = group->size();
    if (n >= static_cast<std::size_t>(paletteSize)) {
        setColor(paletteColor(static_cast<int>(n % paletteSize)));
        return;
    }
    const QSet<unsigned int> occupied = group->colorsOccupied();
    for (int i = 0; i < paletteSize; ++i) {
        const QColor candidate = paletteColor(i);
        if (!occupied.contains(candidate.rgba())) {
            setColor(candidate);
            return;
        }
    }
}

std::string OrvexCurve::generateVariableName()
{
    for (unsigned long long k = 1;; ++k) {
        std::string name = "Curve_" + std::to_string(k);
        if (g_existingVariableNames.insert(name).second)
            return name;
    }
}

const std::string& OrvexCurve::variableName()
{
    if (m_variableName.empty())
        m_variableName = generateVariableName();
    return m_variableName;
}

// ---------------------------------------------------------------- data

void OrvexCurve::setData(const std::vector<double>& x, const std::vector<double>& y)
{
    const std::size_t n = std::min(x.size(), y.size());
    m_x.assign(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(n));
    m_y.assign(y.begin(), y.begin() + static_cast<std::ptrdiff_t>(n));
    dataReplaced();
}

void OrvexCurve::setData(std::vector<double>&& x, std::vector<double>&& y)
{
    m_x = std::move(x);
    m_y = std::move(y);
    const std::size_t n = std::min(m_x.size(), m_y.size());
    m_x.resize(n);
    m_y.resize(n);
    dataReplaced();
}

void OrvexCurve::setData(const std::map<double, double>& data)
{
    std::vector<double> x;
    std::vector<double> y;
    x.reserve(data.size());
    y.reserve(data.size());
    for (const auto& [key, value] : data) {
        x.push_back(key);
        y.push_back(value);
    }
    setData(std::move(x), std::move(y));
}

void OrvexCurve::dataReplaced()
{
    ++m_dataRevision;
    if (const auto group = m_group.lock())
        group->invalidateRawRange();
}

const OrvexCurveTransformNode* OrvexCurve::node(OrvexCurveDataType type) const
{
    if (!m_transformNodes)
        return nullptr;
    const auto it = m_transformNodes->find(type);
    return it == m_transformNodes->end() ? nullptr : it->second.get();
}

const std::vector<double>& OrvexCurve::xData() const
{
    return xData(m_dataType);
}

const std::vector<double>& OrvexCurve::yData() const
{
    return yData(m_dataType);
}

const std::vector<double>& OrvexCurve::xData(OrvexCurveDataType) const
{
    // Normalisation only touches Y: every form shares the raw X.
    return m_x;
}

const std::vector<double>& OrvexCurve::yData(OrvexCurveDataType type) const
{
    if (const auto* n = node(type))
        return n->yData();
    return m_y;
}

std::size_t OrvexCurve::dataSize() const
{
    return m_x.size();
}

void OrvexCurve::setDataType(OrvexCurveDataType type)
{
    if (m_dataType != type)
        m_dataType = type;
}

// ------------------------------------------------------------ extremes

bool OrvexCurve::xAscending() const
{
    return extremes(m_dataType).xAscending;
}

const OrvexCurveExtremes& OrvexCurve::extremes(OrvexCurveDataType type) const
{
    if (const auto* n = node(type))
        return n->extremes();
    if (m_rawExtremesRevision != m_dataRevision) {
        m_rawExtremes = OrvexCurveExtremes::compute(m_x, m_y);
        m_rawExtremesRevision = m_dataRevision;
    }
    return m_rawExtremes;
}

namespace {

double valueAt(const std::vector<double>& values, const OrvexCurveExtremes& e, std::size_t index)
{
    return e.empty() ? 0.0 : values[index];
}

QPointF pointAt(const std::vector<double>& x, const std::vector<double>& y, const OrvexCurveExtremes& e,
                std::size_t index)
{
    return e.empty() ? QPointF() : QPointF(x[index], y[index]);
}

} // namespace

double OrvexCurve::xMin() const { const auto& e = extremes(m_dataType); return valueAt(xData(), e, e.minX); }
double OrvexCurve::xMax() const { const auto& e = extremes(m_dataType); return valueAt(xData(), e, e.maxX); }
double OrvexCurve::yMin() const { const auto& e = extremes(m_dataType); return valueAt(yData(), e, e.minY); }
double OrvexCurve::yMax() const { const auto& e = extremes(m_dataType); return valueAt(yData(), e, e.maxY); }

double OrvexCurve::rawXMin() const { const auto& e = extremes(OrvexCurveDataType::RawData); return valueAt(m_x, e, e.minX); }
double OrvexCurve::rawXMax() const { const auto& e = extremes(OrvexCurveDataType::RawData); return valueAt(m_x, e, e.maxX); }
double OrvexCurve::rawYMin() const { const auto& e = extremes(OrvexCurveDataType::RawData); return valueAt(m_y, e, e.minY); }
double OrvexCurve::rawYMax() const { const auto& e = extremes(OrvexCurveDataType::RawData); return valueAt(m_y, e, e.maxY); }

QPointF OrvexCurve::minimumXPoint() const { const auto& e = extremes(m_dataType); return pointAt(xData(), yData(), e, e.minX); }
QPointF OrvexCurve::maximumXPoint() const { const auto& e = extremes(m_dataType); return pointAt(xData(), yData(), e, e.maxX); }
QPointF OrvexCurve::minimumYPoint() const { const auto& e = extremes(m_dataType); return pointAt(xData(), yData(), e, e.minY); }
QPointF OrvexCurve::maximumYPoint() const { const auto& e = extremes(m_dataType); return pointAt(xData(), yData(), e, e.maxY); }

bool OrvexCurve::contain(const QPointF& point) const
{
    const auto& x = xData();
    const auto& y = yData();
    // qFuzzyCompare treats 0 as exact; compare via 1+v so zeros match too.
    const auto same = [](double a, double b) { return a == b || qFuzzyCompare(1.0 + a, 1.0 + b); };
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (same(x[i], point.x()) && same(y[i], point.y()))
            return true;
    }
    return false;
}

// --------------------------------------------------------------- texts

namespace {

// Stores @p value and answers true when it differs from the old one.
template<typename T>
bool assign(T& field, const T& value)
{
    if (field == value)
        return false;
    field = value;
    return true;
}

} // namespace

void OrvexCurve::setTitle(const std::string& title)
{
    if (assign(m_title, title))
        emit titleChanged(m_title);
}

void OrvexCurve::setSuffix(const std::string& suffix)
{
    if (assign(m_suffix, suffix))
        emit suffixChanged(m_suffix);
}

std::string OrvexCurve::label() const
{
    return m_suffix.empty() ? m_title : m_title + " " + m_suffix;
}

void OrvexCurve::setXUnit(const std::string& unit) { m_xUnit = unit; }
void OrvexCurve::setYUnit(const std::string& unit) { m_yUnit = unit; }
void OrvexCurve::setXLabel(const std::string& label) { m_xLabel = label; }
void OrvexCurve::setYLabel(const std::string& label) { m_yLabel = label; }

// --------------------------------------------------------------- style

void OrvexCurve::setColor(const QColor& color)
{
    if (assign(m_color, color))
        emit colorChanged(m_color);
}

void OrvexCurve::setLineStyle(Qt::PenStyle style) { m_lineStyle = style; }
void OrvexCurve::setWidth(int width) { m_width = width; }
void OrvexCurve::setBarWidth(int width) { m_barWidth = width; }
void OrvexCurve::setCurveType(OrvexCurveType type) { m_curveType = type; }
void OrvexCurve::setPointVisible(bool visible) { m_pointVisible = visible; }

void OrvexCurve::setVisible(bool visible)
{
    if (assign(m_visible, visible))
        emit visibilityChanged(m_visible);
}

void OrvexCurve::setHighlight(bool highlighted)
{
    if (assign(m_highlighted, highlighted))
        emit highlightChanged(m_highlighted);
}

void OrvexCurve::setGroup(std::shared_ptr<OrvexCurveGroup> group)
{
    const auto old = m_group.lock();
    if (old == group)
        return;
    m_group = group;
    // The normalised forms follow the group's range, which just changed.
    if (old)
        old->invalidateRawRange();
    if (group)
        group->invalidateRawRange();
}

} // namespace Gui::Widget
