#pragma once

#include "OrvexQtUIBase_export.h"
#include "Widget/Chart/OrvexCurveExtremes.h"

#include <QtGlobal>

#include <utility>
#include <vector>

namespace Gui::Widget {

class OrvexCurve;

/**
 * Derives one normalised form of a curve's Y data from its raw data.
 *
 * The output depends on the raw data and on a reference range (the group's
 * raw Y range, or the curve's own without a group). It is computed when
 * asked for and kept until either of the two changes, so repeated reads of
 * a large curve cost nothing; the answers are the same as recomputing every
 * time. X data are the raw X data and are not held here.
 *
 * The node belongs to its curve and keeps a plain pointer to it.
 */
class ORVEXQTUIBASE_EXPORT OrvexCurveTransformNode
{
public:
    explicit OrvexCurveTransformNode(const OrvexCurve* curve);
    virtual ~OrvexCurveTransformNode();

    OrvexCurveTransformNode(const OrvexCurveTransformNode&) = delete;
    OrvexCurveTransformNode& operator=(const OrvexCurveTransformNode&) = delete;

    /// Normalised Y data; the reference stays valid until the raw data or
    /// the reference range change.
    const std::vector<double>& yData() const;
    /// Extremes of (raw X, normalised Y).
    const OrvexCurveExtremes& extremes() const;

    /// The (min, max) of raw Y the output is relative to: the group's range,
    /// or the curve's own when it has no group.
    std::pair<double, double> referenceRange() const;

protected:
    /// Writes the normalised form of @p rawY into @p out (same length).
    virtual void transform(const std::vector<double>& rawY, const std::pair<double, double>& range,
                           std::vector<double>& out) const = 0;

    const OrvexCurve* curve() const { return m_curve; }

private:
    void refresh() const;

    const OrvexCurve* m_curve;
    mutable std::vector<double> m_y;
    mutable OrvexCurveExtremes m_extremes;
    mutable std::pair<double, double> m_range{0.0, 0.0};
    mutable quint64 m_revision = 0;
    mutable bool m_valid = false;
};

} // namespace Gui::Widget
