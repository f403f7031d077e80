#pragma once

#include "OrvexQtUIBase_export.h"

#include <QPointF>
#include <QVector>

#include <cstddef>
#include <functional>

namespace Gui::Widget {

/**
 * Reduces a curve to the points that change what a one-pixel line draws.
 *
 * `m4` is for curves whose X is sorted ascending: it keeps the visible slice
 * (found by binary search, plus one point on each side so lines leaving the
 * plot are drawn the same) and, of every device-pixel column, the first,
 * last, lowest and highest point in data order. `reduceInPixelSpace` is for
 * any other order and for non-linear mappings: it drops each point that maps
 * to the same pixel as the point kept before it. Both write data coordinates
 * into @p out (cleared first), leave out NaN points, and never copy the
 * input. The class has no state.
 */
class ORVEXQTUIBASE_EXPORT OrvexSeriesDecimator
{
public:
    /// Pixel coordinate of a data value along one axis: offset + scale * v,
    /// with v the base-10 logarithm of the value on a log axis.
    struct AxisMap
    {
        double offset = 0;
        double scale = 1;
        bool log = false;
        double map(double value) const;
        double unmap(double pixel) const;
    };

    static void m4(const double* x, const double* y, std::size_t count, const AxisMap& xMap, double visibleMin,
                   double visibleMax, QVector<QPointF>& out);

    using PixelMap = std::function<QPointF(double, double)>;
    static void reduceInPixelSpace(const double* x, const double* y, std::size_t count, const PixelMap& toPixel,
                                   QVector<QPointF>& out);

    /// Every point but NaN ones, for drawing without reduction.
    static void copyAll(const double* x, const double* y, std::size_t count, QVector<QPointF>& out);

    /// Index range [first, last) of the sorted @p x inside [min, max],
    /// widened by one point on each side.
    static std::pair<std::size_t, std::size_t> visibleSlice(const double* x, std::size_t count, double min,
                                                           double max);
};

} // namespace Gui::Widget
