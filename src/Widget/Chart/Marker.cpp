#include "Widget/Chart/Marker.h"

#include "Widget/Chart/ChartMarkerGroup.h"
#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QFontMetricsF>

#include <algorithm>

namespace Gui::Widget {

std::unordered_set<std::string> Marker::g_existingLabels;
std::unordered_set<std::string> Marker::g_existingVariableNames;

namespace {

std::string firstFreeName(std::unordered_set<std::string>& taken)
{
    for (int k = 1;; ++k) {
        std::string name = "Marker_" + std::to_string(k);
        if (taken.insert(name).second)
            return name;
    }
}

} // namespace

Marker::Marker(const QPointF& data, std::shared_ptr<ChartMarkerGroup> group, std::string id)
    : m_id(std::move(id)), m_label(generateUniqueMarkerLabel()), m_group(group), m_data(data)
{
}

Marker::~Marker() = default;

std::string Marker::generateUniqueMarkerLabel()
{
    return firstFreeName(g_existingLabels);
}

std::string Marker::generateVariableName()
{
    return firstFreeName(g_existingVariableNames);
}

const std::string& Marker::variableName()
{
    if (m_variableName.empty())
        m_variableName = generateVariableName();
    return m_variableName;
}

bool Marker::setLabel(std::string label, bool unique)
{
    if (label == m_label)
        return false;
    std::string previous = m_label;
    if (unique)
        modifyMarkerLabel(label, previous);
    m_label = std::move(label);
    emit dataChanged();
    return true;
}

void Marker::modifyMarkerLabel(std::string& label, std::string& previous)
{
    g_existingLabels.erase(previous);
    if (g_existingLabels.count(label)) {
        const std::string base = label;
        for (int k = 1; g_existingLabels.count(label); ++k)
            label = base + "_" + std::to_string(k);
    }
    g_existingLabels.insert(label);
}

void Marker::setData(const QPointF& data)
{
    if (data == m_data)
        return;
    m_data = data;
    emit dataChanged();
}

OrvexChartView* Marker::view() const
{
    const auto group = m_group.lock();
    if (!group)
        return nullptr;
    const auto manager = group->manager().lock();
    return manager ? manager->view() : nullptr;
}

QPointF Marker::position() const
{
    const auto* v = view();
    return v ? v->valueToScene(m_data) : m_data;
}

void Marker::setColor(QColor color)
{
    if (color == m_color)
        return;
    m_color = color;
    emit dataChanged();
}

void Marker::setWeight(double weight)
{
    if (weight == m_weight)
        return;
    m_weight = weight;
    emit dataChanged();
}

void Marker::setVisible(bool visible)
{
    if (visible == m_visible)
        return;
    m_visible = visible;
    emit dataChanged();
}

void Marker::setHighlight(bool highlight)
{
    if (highlight == m_highlight)
        return;
    m_highlight = highlight;
    emit dataChanged();
}

std::shared_ptr<OrvexCurve> Marker::curve() const
{
    const auto* v = view();
    if (m_curveId.empty() || !v || !v->getCurveManager())
        return nullptr;
    return v->getCurveManager()->getCurve(m_curveId);
}

void Marker::setCurveId(std::string curveId)
{
    if (curveId == m_curveId)
        return;
    m_curveId = std::move(curveId);
    emit dataChanged();
}

void Marker::calculateRelativeParams(const QPointF& scenePos)
{
    const auto* v = view();
    if (!v)
        return;
    const QRectF area = v->plotArea();
    if (area.width() <= 0 || area.height() <= 0)
        return;
    m_relativeX = (scenePos.x() - area.left()) / area.width();
    m_relativeY = (scenePos.y() - area.top()) / area.height();
}

void Marker::calculateRelativeValue(const QPointF& data)
{
    const auto* v = view();
    if (v)
        calculateRelativeParams(v->valueToScene(data));
}

bool Marker::isPolar() const
{
    const auto* v = view();
    return v && v->isPolarChart();
}

QString Marker::number(double value)
{
    return QString::number(value, 'g', 6);
}

QStringList Marker::hintLines() const
{
    return QStringList{QString::fromStdString(m_label)} + hintTexts();
}

QRectF Marker::getHintRect() const
{
    const auto* v = view();
    const QFont font = v ? v->getConfiguration().font("Markers") : QFont();
    const QFontMetricsF metrics(font);
    double width = 0;
    const QStringList lines = hintLines();
    for (const QString& line : lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    const QSizeF size(width + 6, metrics.height() * lines.size() + 4);
    return QRectF(hintTopLeft(size), size);
}

QPointF Marker::hintTopLeft(const QSizeF& size) const
{
    const QPointF p = position();
    const auto* v = view();
    QPointF corner = p + QPointF(8, 8);
    if (v) {
        const QRectF area = v->plotArea();
        if (corner.x() + size.width() > area.right())
            corner.setX(p.x() - 8 - size.width());
        if (corner.y() + size.height() > area.bottom())
            corner.setY(p.y() - 8 - size.height());
    }
    return corner;
}

} // namespace Gui::Widget
