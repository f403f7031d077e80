#pragma once

#include "OrvexQtUIBase_export.h"

#include <cstddef>
#include <vector>

namespace Gui::Widget {

/**
 * Positions of the smallest and largest X and Y of a data set, found in one
 * pass per axis, and whether X ascends. Ties keep the first position. NaN
 * values never win a comparison, so they are skipped unless every value is
 * NaN. An empty data set has no positions (`empty()` is true).
 */
struct ORVEXQTUIBASE_EXPORT OrvexCurveExtremes
{
    std::size_t minX = 0;
    std::size_t maxX = 0;
    std::size_t minY = 0;
    std::size_t maxY = 0;
    std::size_t count = 0;
    bool xAscending = true; ///< X never falls and holds no NaN

    bool empty() const { return count == 0; }

    /// Scans the first min(x.size(), y.size()) points.
    static OrvexCurveExtremes compute(const std::vector<double>& x, const std::vector<double>& y);
};

} // namespace Gui::Widget
