#pragma once

#include "Widget/Chart/LineMarker.h"

namespace Gui::Widget {

/**
 * A line marker drawn as a vertical line at its X (an angle ray in a polar chart), reading "g X = <x> " ("g Ang = <x> (Deg)"); attached, it takes the curve's Y at that X and the curve's X unit follows the value.
 */
class ORVEXQTUIBASE_EXPORT VerticalLineMarker : public LineMarker
{
    Q_OBJECT

public:
    VerticalLineMarker(const QPointF& data, std::shared_ptr<ChartMarkerGroup> group, std::string id);

    MarkerType type() const override { return MarkerType::VerticalLineMarker; }
    QStringList hintTexts() const override;

protected:
    QPointF hintTopLeft(const QSizeF& size) const override;
};

} // namespace Gui::Widget
