#include "Widget/Chart/OrvexSeriesDecimator.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Gui::Widget {

double OrvexSeriesDecimator::AxisMap::map(double value) const
{
    return offset + scale * (log ? std::log10(value) : value);
}

double OrvexSeriesDecimator::AxisMap::unmap(double pixel) const
{
    const double v = (pixel - offset) / scale;
    return log ? std::pow(10.0, v) : v;
}

std::pair<std::size_t, std::size_t> OrvexSeriesDecimator::visibleSlice(const double* x, std::size_t count,
                                                                       double min, double max)
{
    const double* end = x + count;
    std::size_t first = static_cast<std::size_t>(std::lower_bound(x, end, min) - x);
    std::size_t last = static_cast<std::size_t>(std::upper_bound(x, end, max) - x);
    if (first > 0)
        --first;
    if (last < count)
        ++last;
    return {first, last};
}

void OrvexSeriesDecimator::m4(const double* x, const double* y, std::size_t count, const AxisMap& xMap,
                              double visibleMin, double visibleMax, QVector<QPointF>& out)
{
    out.clear();
    if (count == 0)
        return;
    auto [first, last] = visibleSlice(x, count, visibleMin, visibleMax);
    if (xMap.log) // no logarithm for these
        first = std::max(first, static_cast<std::size_t>(std::upper_bound(x, x + count, 0.0) - x));
    if (first >= last)
        return;
    out.reserve(static_cast<int>(std::min<std::size_t>(last - first, 4 * 8192)));
    auto column = [&](std::size_t i) { return std::floor(xMap.map(x[i])); };
    auto emit = [&](std::size_t i) {
        if (!std::isnan(x[i]) && !std::isnan(y[i]))
            out.append(QPointF(x[i], y[i]));
    };

    std::size_t i = first;
    while (i < last) {
        // The column's end: binary search for the next column's left edge,
        // then settle rounding at the edge point by point.
        const double c = column(i);
        std::size_t j = static_cast<std::size_t>(std::lower_bound(x + i, x + last, xMap.unmap(c + 1)) - x);
        j = std::max(j, i + 1);
        while (j > i + 1 && column(j - 1) != c)
            --j;
        while (j < last && column(j) == c)
            ++j;

        std::size_t iMin = i;
        std::size_t iMax = i;
        double lo = y[i];
        double hi = y[i];
        for (std::size_t k = i + 1; k < j; ++k) {
            const double v = y[k];
            if (v < lo) {
                lo = v;
                iMin = k;
            }
            if (v > hi) {
                hi = v;
                iMax = k;
            }
        }
        std::size_t idx[4] = {i, iMin, iMax, j - 1};
        std::sort(idx, idx + 4);
        emit(idx[0]);
        for (int k = 1; k < 4; ++k) {
            if (idx[k] != idx[k - 1])
                emit(idx[k]);
        }
        i = j;
    }
}

void OrvexSeriesDecimator::reduceInPixelSpace(const double* x, const double* y, std::size_t count,
                                              const PixelMap& toPixel, QVector<QPointF>& out)
{
    out.clear();
    bool havePrevious = false;
    double px = 0;
    double py = 0;
    // The last point of a run on one pixel is kept as well, so the line
    // leaves that pixel towards the same next point.
    bool pending = false;
    std::size_t pendingIndex = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (std::isnan(x[i]) || std::isnan(y[i]))
            continue;
        const QPointF p = toPixel(x[i], y[i]);
        const double cx = std::floor(p.x());
        const double cy = std::floor(p.y());
        if (havePrevious && cx == px && cy == py) {
            pending = true;
            pendingIndex = i;
            continue;
        }
        if (pending)
            out.append(QPointF(x[pendingIndex], y[pendingIndex]));
        pending = false;
        out.append(QPointF(x[i], y[i]));
        havePrevious = true;
        px = cx;
        py = cy;
    }
    if (pending)
        out.append(QPointF(x[pendingIndex], y[pendingIndex]));
}

void OrvexSeriesDecimator::copyAll(const double* x, const double* y, std::size_t count, QVector<QPointF>& out)
{
    out.clear();
    out.reserve(static_cast<int>(count));
    for (std::size_t i = 0; i < count; ++i) {
        if (!std::isnan(x[i]) && !std::isnan(y[i]))
            out.append(QPointF(x[i], y[i]));
    }
}

} // namespace Gui::Widget
