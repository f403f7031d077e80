#pragma once

#include <QtGlobal>

namespace Gui::Widget {

/**
 * Drawing kind of a single curve. The chart's own layout (line, bar or
 * polar plot) is chosen by the view; this only says how one curve is drawn
 * within it. New curves are `Line`; the value is not stored in curve files,
 * so an imported curve is always `Line` as well.
 */
enum class OrvexCurveType : qint32 {
    Line = 0,    ///< connected line through the points (default)
    Scatter = 1, ///< point symbols only
    Bar = 2,     ///< one bar per point, `barWidth()` wide
};

/**
 * Form in which a curve hands out its data. Raw data are stored; the two
 * normalised forms are derived on demand by the curve's transform nodes.
 */
enum class OrvexCurveDataType : qint32 {
    RawData = 0,              ///< the data as set
    DbNormalizedData = 1,     ///< Y shifted so that the group's peak is 0 dB
    LinearNormalizedData = 2, ///< Y scaled so that the group spans 0 to 1
};

} // namespace Gui::Widget
