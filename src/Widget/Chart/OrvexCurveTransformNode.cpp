#include "Widget/Chart/OrvexCurveTransformNode.h"

#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveGroup.h"

namespace Gui::Widget {

OrvexCurveTransformNode::OrvexCurveTransformNode(const OrvexCurve* curve)
    : m_curve(curve)
{
}

OrvexCurveTransformNode::~OrvexCurveTransformNode() = default;

std::pair<double, double> OrvexCurveTransformNode::referenceRange() const
{
    if (const auto group = m_curve->group().lock())
        return group->groupYRawDataRange();
    return {m_curve->rawYMin(), m_curve->rawYMax()};
}

const std::vector<double>& OrvexCurveTransformNode::yData() const
{
    refresh();
    return m_y;
}

const OrvexCurveExtremes& OrvexCurveTransformNode::extremes() const
{
    refresh();
    return m_extremes;
}

void OrvexCurveTransformNode::refresh() const
{
    const auto range = referenceRange();
    // A NaN in the range never compares equal, which only costs a recompute.
    if (m_valid && m_revision == m_curve->dataRevision() && m_range == range)
        return;
    const auto& rawY = m_curve->yData(OrvexCurveDataType::RawData);
    m_y.resize(rawY.size());
    transform(rawY, range, m_y);
    m_extremes = OrvexCurveExtremes::compute(m_curve->xData(OrvexCurveDataType::RawData), m_y);
    m_range = range;
    m_revision = m_curve->dataRevision();
    m_valid = true;
}

} // namespace Gui::Widget
