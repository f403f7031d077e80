#pragma once

#include "Widget/Chart/LineMarker.h"

namespace Gui::Widget {

/**
 * A line marker drawn as a horizontal line at its Y (a magnitude circle in a polar chart), reading "g Y = <y> " ("g Mag = <y> "); attached, it sits where the curve reaches that Y and the curve's Y unit follows the value.
 */
class ORVEXQTUIBASE_EXPORT HorizontalLineMarker : public LineMarker
{
    Q_OBJECT

public:
    HorizontalLineMarker(const QPointF& data, std::shared_ptr<ChartMarkerGroup> group, std::string id);

    MarkerType type() const override { return MarkerType::HorizontalLineMarker; }
    QStringList hintTexts() const override;

protected:
    QPointF hintTopLeft(const QSizeF& size) const override;
};

} // namespace Gui::Widget
