#include "Widget/Chart/OrvexCurveLinearNormalizedNode.h"

#include <algorithm>

namespace Gui::Widget {

OrvexCurveLinearNormalizedNode::OrvexCurveLinearNormalizedNode(const OrvexCurve* curve)
    : OrvexCurveTransformNode(curve)
{
}

void OrvexCurveLinearNormalizedNode::transform(const std::vector<double>& rawY,
                                               const std::pair<double, double>& range,
                                               std::vector<double>& out) const
{
    const double span = range.second - range.first;
    if (span == 0.0) {
        std::fill(out.begin(), out.end(), 0.0);
        return;
    }
    for (std::size_t i = 0; i < rawY.size(); ++i)
        out[i] = (rawY[i] - range.first) / span;
}

} // namespace Gui::Widget
