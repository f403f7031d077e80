#pragma once

#include "Widget/Chart/OrvexChartOverlayItem.h"

#include <QColor>
#include <QStringList>

#include <string>
#include <vector>

namespace Gui::Widget {

/**
 * The chart's legend: one entry per curve of the visible groups, a short
 * line in the curve's colour and its `label()` text in the "Legend" font and
 * colour (hidden curves greyed). Docked (the start) it sits in the top-right
 * corner of the plot area; floating it stays where the legend manipulator
 * put it.
 */
class ORVEXQTUIBASE_EXPORT OrvexLegendItem : public OrvexChartOverlayItem
{
public:
    struct Entry
    {
        std::string curveId;
        QString label;
        QColor color;
        bool visible = true;
    };

    explicit OrvexLegendItem(OrvexChartView* view);

    const std::vector<Entry>& entries() const { return m_entries; }
    QStringList labels() const;
    /// The legend box in scene coordinates (empty without entries).
    QRectF legendRect() const;
    /// Index of the entry under @p scenePos, or -1.
    int entryAt(const QPointF& scenePos) const;

    bool docked() const { return m_docked; }
    void setDocked(bool docked);
    /// Top-left corner while floating, in scene coordinates.
    void setFloatingTopLeft(const QPointF& topLeft);

    void refresh() override;
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    double rowHeight() const;

    std::vector<Entry> m_entries;
    bool m_docked = true;
    QPointF m_floatingTopLeft;
};

} // namespace Gui::Widget
