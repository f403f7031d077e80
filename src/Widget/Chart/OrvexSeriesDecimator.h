#pragma once

#include "OrvexQtUIBase_export.h"

#include <QPointF>
#include <QVector>

#include <cstddef>
#include <functional>
#include <utility>

namespace Gui::Widget {

/**
 * Reduces a curve to the points that change what its line draws.
 *
 * `m4` is for curves whose X is sorted ascending without NaN, drawn on
 * cartesian axes. It keeps the visible slice (found by binary search, plus
 * one point on each side so lines leaving the plot are drawn the same) and
 * groups the points by the device-pixel column they fall in. A column keeps
 * its first and last point, so every line between two columns is the very
 * line of the full curve; inside the column the line becomes a vertical
 * stroke through the column's top and bottom rows (M4 aggregation).
 *
 * With `OnePixelLine` (a solid, cosmetic, one-pixel pen without
 * antialiasing, Qt Charts' default) the result is pixel-identical to drawing
 * every point: device coordinates are computed with the same arithmetic as
 * Qt Charts' domains, and each column's pixels are predicted with the integer
 * arithmetic of Qt's cosmetic line rasterizer, for the full data and for the
 * stroke. Pixels that differ must be lit anyway by a neighbouring column's
 * run; otherwise the column keeps some original lines as well (those at its
 * edges, or those that light pixels next door), and as a last resort all its
 * points. `AnyPen` keeps each column's first, lowest,
 * highest and last point without that check; wide or dashed pens may then
 * differ by a pixel at the ends of vertical runs.
 *
 * `reduceInPixelSpace` is for any other order and for polar plots: it drops
 * each point that maps to the same pixel as the point kept before it.
 *
 * All write data coordinates into @p out (cleared first), leave out NaN
 * points and never copy the input. The class has no state.
 */
class ORVEXQTUIBASE_EXPORT OrvexSeriesDecimator
{
public:
    /// Where a value lands along one axis, in device pixels.
    struct AxisMap
    {
        double min = 0; ///< axis range
        double max = 1;
        double length = 1; ///< plot extent along the axis, logical pixels
        double origin = 0; ///< device coordinate of the plot's left or top edge
        double scale = 1; ///< device pixels per logical pixel
        bool log = false;
        double base = 10;
        bool vertical = false; ///< values grow upwards, device coordinates downwards

        double toDevice(double value) const;
        double fromDevice(double device) const;
    };

    enum LineKind { OnePixelLine, AnyPen };

    static void m4(const double* x, const double* y, std::size_t count, const AxisMap& xMap, const AxisMap& yMap,
                   LineKind kind, QVector<QPointF>& out);

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
