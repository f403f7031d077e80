#pragma once

#include "Widget/Chart/OrvexCurveTransformNode.h"

namespace Gui::Widget {

/**
 * dB normalisation: every Y becomes y - r, r being the largest raw Y of the
 * curve's group (of the curve itself without a group). The data are taken to
 * be in decibels already, so the group's peak lands on 0 dB.
 */
class ORVEXQTUIBASE_EXPORT OrvexCurveDbNormalizedNode : public OrvexCurveTransformNode
{
public:
    explicit OrvexCurveDbNormalizedNode(const OrvexCurve* curve);

protected:
    void transform(const std::vector<double>& rawY, const std::pair<double, double>& range,
                   std::vector<double>& out) const override;
};

} // namespace Gui::Widget
