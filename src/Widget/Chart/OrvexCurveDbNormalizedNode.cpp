#include "Widget/Chart/OrvexCurveDbNormalizedNode.h"

namespace Gui::Widget {

OrvexCurveDbNormalizedNode::OrvexCurveDbNormalizedNode(const OrvexCurve* curve)
    : OrvexCurveTransformNode(curve)
{
}

void OrvexCurveDbNormalizedNode::transform(const std::vector<double>& rawY, const std::pair<double, double>& range,
                                           std::vector<double>& out) const
{
    const double peak = range.second;
    for (std::size_t i = 0; i < rawY.size(); ++i)
        out[i] = rawY[i] - peak;
}

} // namespace Gui::Widget
