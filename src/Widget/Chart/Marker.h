#pragma once

#include "OrvexQtUIBase_export.h"
#include "Widget/Chart/ChartMarkerTypes.h"

#include <QColor>
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QStringList>

#include <memory>
#include <string>
#include <unordered_set>

namespace Gui::Widget {

class ChartMarkerGroup;
class OrvexChartView;
class OrvexCurve;

/**
 * A user-placed annotation of a chart, at a point in data coordinates.
 *
 * Held by `std::shared_ptr` in a `ChartMarkerGroup`, which it knows through
 * a weak pointer. Defaults: black, weight 1, visible, detached (empty curve
 * id), highlighted (the first hit test of the marker manager clears this on
 * every marker but the hovered one). The label and the variable name are
 * "Marker_" plus the smallest number not yet handed out in the process, each
 * from its own class-wide set; labels are made at construction, variable
 * names on first use, and neither is given back.
 *
 * An attached marker follows its curve (looked up by id in the view's curve
 * manager); the view computes where. Setters emit `dataChanged()` when the
 * value changes, so the drawing items repaint.
 */
class ORVEXQTUIBASE_EXPORT Marker : public QObject, public std::enable_shared_from_this<Marker>
{
    Q_OBJECT

public:
    Marker(const QPointF& data, std::shared_ptr<ChartMarkerGroup> group, std::string id);
    ~Marker() override;

    virtual MarkerType type() const = 0;

    const std::string& id() const { return m_id; }
    void setId(std::string id) { m_id = std::move(id); }
    const std::string& label() const { return m_label; }
    /// Takes @p label; with @p unique a label already in use elsewhere gets
    /// "_<n>" appended until it is free. Answers whether the label changed.
    bool setLabel(std::string label, bool unique);
    /// "Marker_<n>", made on the first call.
    const std::string& variableName();

    QPointF data() const { return m_data; }
    virtual void setData(const QPointF& data);
    /// Scene position of the data point as the view shows it now.
    QPointF position() const;

    QColor color() const { return m_color; }
    void setColor(QColor color);
    double weight() const { return m_weight; }
    void setWeight(double weight);
    bool visible() const { return m_visible; }
    void setVisible(bool visible);
    bool highlight() const { return m_highlight; }
    void setHighlight(bool highlight);

    std::weak_ptr<ChartMarkerGroup> group() const { return m_group; }
    void setGroup(std::shared_ptr<ChartMarkerGroup> group) { m_group = group; }
    /// The view of the group's manager, or null.
    OrvexChartView* view() const;

    std::shared_ptr<OrvexCurve> curve() const;
    const std::string& curveId() const { return m_curveId; }
    void setCurveId(std::string curveId);
    void attach(std::string curveId) { setCurveId(std::move(curveId)); }
    void detach() { setCurveId(std::string()); }
    bool attached() const { return !m_curveId.empty(); }

    /// Keeps the marker's place as fractions (0..1) of the plot area from a
    /// scene position / from a data point.
    void calculateRelativeParams(const QPointF& scenePos);
    void calculateRelativeValue(const QPointF& data);
    double relativeX() const { return m_relativeX; }
    double relativeY() const { return m_relativeY; }

    /// The read-out lines (without the label), as drawn in the hint box.
    virtual QStringList hintTexts() const = 0;
    /// All lines of the hint box: the label, then `hintTexts()`.
    QStringList hintLines() const;
    /// The hint box in scene coordinates; also what hit testing uses.
    virtual QRectF getHintRect() const;

    static std::string generateUniqueMarkerLabel();

signals:
    void dataChanged();

protected:
    /// Where the hint box goes for a box of @p size, in scene coordinates.
    virtual QPointF hintTopLeft(const QSizeF& size) const;
    /// Frees @p previous and reserves @p label (made unique when asked).
    void modifyMarkerLabel(std::string& label, std::string& previous);
    bool isPolar() const;
    static QString number(double value);
    static std::string generateVariableName();

    static std::unordered_set<std::string> g_existingLabels;
    static std::unordered_set<std::string> g_existingVariableNames;

private:
    std::string m_id;
    std::string m_label;
    std::string m_variableName;
    std::weak_ptr<ChartMarkerGroup> m_group;
    std::string m_curveId;
    QPointF m_data;
    double m_relativeX = 0;
    double m_relativeY = 0;
    QColor m_color = QColor("black");
    double m_weight = 1.0;
    bool m_visible = true;
    bool m_highlight = true;
};

} // namespace Gui::Widget
