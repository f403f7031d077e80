#pragma once

#include "Widget/Chart/OrvexChartOverlayItem.h"

#include <QString>

namespace Gui::Widget {

/**
 * Tool tip of the hovered legend entry: the entry's label and the docking
 * hint in a small pale box beside the cursor. Hidden at the start.
 */
class ORVEXQTUIBASE_EXPORT OrvexLegendTipItem : public OrvexChartOverlayItem
{
public:
    explicit OrvexLegendTipItem(OrvexChartView* view);

    void showTip(const QString& text, const QPointF& scenePos);
    void hideTip();
    bool isShown() const { return m_shown; }
    QString text() const { return m_text; }

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    QRectF tipRect() const;

    bool m_shown = false;
    QString m_text;
    QPointF m_anchor;
};

} // namespace Gui::Widget
