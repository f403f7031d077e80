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
    const auto [first, last] = visibleSlice(x, count, visibleMin, visibleMax);
    if (first >= last)
        return;
    out.reserve(static_cast<int>(std::min<std::size_t>(last - first, 4 * 8192)));

    // Column of the current bin, its index range and its extremes.
    bool open = false;
    double column = 0;
    std::size_t iFirst = 0;
    std::size_t iLast = 0;
    std::size_t iMin = 0;
    std::size_t iMax = 0;
    // Besides the first, lowest, highest and last point, their neighbours in
    // the column are kept: the pixel a line rasterizer lights at a vertex
    // depends on the direction of the two segments meeting there.
    auto flush = [&] {
        std::size_t idx[10] = {iFirst, iFirst + 1, iMin - 1, iMin, iMin + 1, iMax - 1, iMax, iMax + 1, iLast - 1, iLast};
        for (std::size_t& i : idx)
            i = std::clamp(i, iFirst, iLast);
        std::sort(idx, idx + 10);
        std::size_t previous = std::numeric_limits<std::size_t>::max();
        for (const std::size_t i : idx) {
            if (i != previous && !std::isnan(y[i]) && !std::isnan(x[i]))
                out.append(QPointF(x[i], y[i]));
            previous = i;
        }
    };
    for (std::size_t i = first; i < last; ++i) {
        const double yi = y[i];
        if (std::isnan(yi) || std::isnan(x[i]) || (xMap.log && x[i] <= 0))
            continue;
        const double c = std::floor(xMap.map(x[i]));
        if (!open || c != column) {
            if (open)
                flush();
            open = true;
            column = c;
            iFirst = iLast = iMin = iMax = i;
            continue;
        }
        iLast = i;
        if (yi < y[iMin])
            iMin = i;
        if (yi > y[iMax])
            iMax = i;
    }
    if (open)
        flush();
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
