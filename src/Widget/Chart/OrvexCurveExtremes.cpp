#include "Widget/Chart/OrvexCurveExtremes.h"

#include <algorithm>
#include <cmath>

namespace Gui::Widget {

namespace {

// Index of the first NaN-free extreme; `better(a, b)` says a beats b.
template<typename Better>
std::size_t extremeIndex(const std::vector<double>& values, std::size_t count, Better better)
{
    std::size_t best = 0;
    while (best < count && std::isnan(values[best]))
        ++best;
    if (best == count)
        return 0;
    for (std::size_t i = best + 1; i < count; ++i) {
        if (better(values[i], values[best]))
            best = i;
    }
    return best;
}

} // namespace

OrvexCurveExtremes OrvexCurveExtremes::compute(const std::vector<double>& x, const std::vector<double>& y)
{
    OrvexCurveExtremes result;
    result.count = std::min(x.size(), y.size());
    const auto less = [](double a, double b) { return a < b; };
    const auto greater = [](double a, double b) { return a > b; };
    result.minX = extremeIndex(x, result.count, less);
    result.maxX = extremeIndex(x, result.count, greater);
    result.minY = extremeIndex(y, result.count, less);
    result.maxY = extremeIndex(y, result.count, greater);
    return result;
}

} // namespace Gui::Widget
