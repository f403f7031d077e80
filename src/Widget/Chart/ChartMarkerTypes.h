#pragma once

namespace Gui::Widget {

/// Kind of a chart marker; the names are also those used in recorded scripts.
enum class MarkerType { PointMarker, HorizontalLineMarker, VerticalLineMarker };

/// Symbol drawn by a point marker. Values outside 0..10 draw no symbol.
enum MarkerSymbol {
    Diamond = 0,
    Triangle = 1,
    InvertedTriangle = 2,
    Rectangle = 3,
    Circle = 4,
    HorizontalLine = 5,
    VerticalLine = 6,
    Cross = 7,
    Plus = 8,
    BackwardSlash = 9,
    ForwardSlash = 10,
    None = 11,
};

} // namespace Gui::Widget
