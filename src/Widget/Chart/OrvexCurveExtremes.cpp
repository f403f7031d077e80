#include "Widget/Chart/OrvexCurveExtremes.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace Gui::Widget {

namespace {

// Indices of the first NaN-free lowest and highest values, in one pass that
// keeps the current extremes in registers; @p ascending (if given) tells
// whether the values never fall and hold no NaN.
template <bool TrackAscending>
std::pair<std::size_t, std::size_t> extremeIndices(const std::vector<double>& values, std::size_t count,
                                                   bool* ascending = nullptr)
{
    if (ascending)
        *ascending = count == 0 || !std::isnan(values[0]);
    std::size_t first = 0;
    while (first < count && std::isnan(values[first]))
        ++first;
    if (first == count)
        return {0, 0};
    double lo = values[first];
    double hi = lo;
    std::size_t iLo = first;
    std::size_t iHi = first;
    bool rising = true;
    for (std::size_t i = first + 1; i < count; ++i) {
        const double v = values[i];
        if constexpr (TrackAscending)
            rising &= v >= values[i - 1];
        if (v < lo) {
            lo = v;
            iLo = i;
        }
        if (v > hi) {
            hi = v;
            iHi = i;
        }
    }
    if (ascending)
        *ascending = *ascending && rising;
    return {iLo, iHi};
}

} // namespace

OrvexCurveExtremes OrvexCurveExtremes::compute(const std::vector<double>& x, const std::vector<double>& y)
{
    OrvexCurveExtremes result;
    result.count = std::min(x.size(), y.size());
    std::tie(result.minX, result.maxX) = extremeIndices<true>(x, result.count, &result.xAscending);
    std::tie(result.minY, result.maxY) = extremeIndices<false>(y, result.count);
    return result;
}

} // namespace Gui::Widget
