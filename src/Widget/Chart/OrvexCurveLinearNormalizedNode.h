#pragma once

#include "Widget/Chart/OrvexCurveTransformNode.h"

namespace Gui::Widget {

/**
 * Linear normalisation: every Y becomes (y - min) / (max - min) over the
 * group's raw Y range (the curve's own without a group), so the group spans
 * 0 to 1. A group whose raw Y are all equal has no span; its curves then
 * read 0 everywhere instead of 0/0.
 */
class ORVEXQTUIBASE_EXPORT OrvexCurveLinearNormalizedNode : public OrvexCurveTransformNode
{
public:
    explicit OrvexCurveLinearNormalizedNode(const OrvexCurve* curve);

protected:
    void transform(const std::vector<double>& rawY, const std::pair<double, double>& range,
                   std::vector<double>& out) const override;
};

} // namespace Gui::Widget
