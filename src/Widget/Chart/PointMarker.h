#pragma once

#include "Widget/Chart/Marker.h"

namespace Gui::Widget {

/**
 * A marker drawn as a symbol at its point, with an X/Y read-out
 * (magnitude/angle in a polar chart). Defaults: symbol `Circle`, size 6.
 * Symbol values outside the table draw the text "None".
 */
class ORVEXQTUIBASE_EXPORT PointMarker : public Marker
{
    Q_OBJECT

public:
    PointMarker(const QPointF& data, std::shared_ptr<ChartMarkerGroup> group, std::string id);

    MarkerType type() const override { return MarkerType::PointMarker; }

    MarkerSymbol symbol() const { return m_symbol; }
    void setSymbol(MarkerSymbol symbol);
    double symbolSize() const { return m_symbolSize; }
    void setSymbolSize(double size);
    /// The character drawn for the symbol.
    QString symbolString() const;
    static QString symbolString(MarkerSymbol symbol);

    QStringList hintTexts() const override;

private:
    MarkerSymbol m_symbol = Circle;
    double m_symbolSize = 6.0;
};

} // namespace Gui::Widget
