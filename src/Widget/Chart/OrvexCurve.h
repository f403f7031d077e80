#pragma once

#include "OrvexQtUIBase_export.h"
#include "Widget/Chart/OrvexCurveExtremes.h"
#include "Widget/Chart/OrvexCurveTypes.h"

#include <QColor>
#include <QObject>
#include <QPointF>

#include <map>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace Gui::Widget {

class OrvexCurveGroup;
class OrvexCurveTransformNode;

/**
 * One curve of a chart: its data, texts and drawing style.
 *
 * Curves are held by `std::shared_ptr` (their group owns them) and know their
 * group through a weak pointer. Defaults: data type raw, title "curve", solid
 * line of width 1, bar width 1, visible, not highlighted, no point symbols,
 * curve type `Line`, empty units, labels and suffix. An empty id is replaced
 * by a braced UUID. The colour starts as red and is then chosen from the
 * 30-colour palette: the first entry not taken in the group while the group
 * has fewer than 30 curves, entry n mod 30 from then on.
 *
 * The variable name that addresses the curve in recorded scripts ("Curve_"
 * plus the smallest free number) is made on first use and is unique for the
 * life of the process.
 *
 * Normalised data are derived from the raw data by transform nodes and cached
 * until the raw data or the group's raw Y range change. `setData` does not
 * emit `dataChanged()`: whoever changes the data emits it once done, so a
 * caller setting data and several fields announces one change.
 */
class ORVEXQTUIBASE_EXPORT OrvexCurve : public QObject, public std::enable_shared_from_this<OrvexCurve>
{
    Q_OBJECT

public:
    OrvexCurve(std::shared_ptr<OrvexCurveGroup> group, std::string id);
    ~OrvexCurve() override;

    // Data. Vectors of different lengths are cut to the shorter one.
    /// Copies @p x and @p y once.
    void setData(const std::vector<double>& x, const std::vector<double>& y);
    /// Takes over @p x and @p y without copying.
    void setData(std::vector<double>&& x, std::vector<double>&& y);
    /// Keys become X in ascending order, values Y.
    void setData(const std::map<double, double>& data);

    /// Data in the current data type. The references stay valid until the
    /// raw data or the group's raw Y range change.
    const std::vector<double>& xData() const;
    const std::vector<double>& yData() const;
    const std::vector<double>& xData(OrvexCurveDataType type) const;
    const std::vector<double>& yData(OrvexCurveDataType type) const;
    std::size_t dataSize() const;
    OrvexCurveDataType dataType() const { return m_dataType; }
    void setDataType(OrvexCurveDataType type);
    /// Changes whenever the raw data are set; caches compare against it.
    quint64 dataRevision() const { return m_dataRevision; }

    // Extremes over the current data type; 0 (or the null point) without data.
    double xMin() const;
    double xMax() const;
    double yMin() const;
    double yMax() const;
    double rawXMin() const;
    double rawXMax() const;
    double rawYMin() const;
    double rawYMax() const;
    QPointF minimumXPoint() const;
    QPointF maximumXPoint() const;
    QPointF minimumYPoint() const;
    QPointF maximumYPoint() const;
    /// Whether X never falls and holds no NaN (found with the extremes).
    bool xAscending() const;
    /// Whether one of the data points (current data type) equals @p point,
    /// compared with qFuzzyCompare per coordinate.
    bool contain(const QPointF& point) const;

    // Texts
    const std::string& id() const { return m_id; }
    const std::string& title() const { return m_title; }
    void setTitle(const std::string& title);
    const std::string& suffix() const { return m_suffix; }
    void setSuffix(const std::string& suffix);
    /// The title, followed by a blank and the suffix when there is one.
    std::string label() const;
    const std::string& xUnit() const { return m_xUnit; }
    void setXUnit(const std::string& unit);
    const std::string& yUnit() const { return m_yUnit; }
    void setYUnit(const std::string& unit);
    const std::string& xLabel() const { return m_xLabel; }
    void setXLabel(const std::string& label);
    const std::string& yLabel() const { return m_yLabel; }
    void setYLabel(const std::string& label);
    /// "Curve_<n>", made on the first call.
    const std::string& variableName();

    // Style
    QColor color() const { return m_color; }
    void setColor(const QColor& color);
    Qt::PenStyle lineStyle() const { return m_lineStyle; }
    void setLineStyle(Qt::PenStyle style);
    int width() const { return m_width; }
    void setWidth(int width);
    int barWidth() const { return m_barWidth; }
    void setBarWidth(int width);
    OrvexCurveType curveType() const { return m_curveType; }
    void setCurveType(OrvexCurveType type);
    bool pointVisible() const { return m_pointVisible; }
    void setPointVisible(bool visible);
    bool visible() const { return m_visible; }
    void setVisible(bool visible);
    bool isHighlighted() const { return m_highlighted; }
    void setHighlight(bool highlighted);

    // Structure
    std::weak_ptr<OrvexCurveGroup> group() const { return m_group; }
    /// Only sets the link; the group's addCurve/removeCurve move the curve.
    void setGroup(std::shared_ptr<OrvexCurveGroup> group);

    /// Palette entry @p index mod 30 (alpha 255).
    static QColor paletteColor(int index);
    static constexpr int paletteSize = 30;

signals:
    void beforeCurveDeleted();
    void colorChanged(QColor color);
    void dataChanged();
    void highlightChanged(bool highlighted);
    void suffixChanged(std::string suffix);
    void titleChanged(std::string title);
    void visibilityChanged(bool visible);

protected:
    /// Takes the smallest free "Curve_<n>" and reserves it for good.
    static std::string generateVariableName();
    void initTransformNodes();
    /// Picks the palette colour for a curve joining its group.
    void setRandColor();

    static std::unordered_set<std::string> g_existingVariableNames;

private:
    const OrvexCurveExtremes& extremes(OrvexCurveDataType type) const;
    const OrvexCurveTransformNode* node(OrvexCurveDataType type) const;
    void dataReplaced();

    std::weak_ptr<OrvexCurveGroup> m_group;
    std::shared_ptr<std::map<OrvexCurveDataType, std::shared_ptr<OrvexCurveTransformNode>>> m_transformNodes;
    OrvexCurveDataType m_dataType = OrvexCurveDataType::RawData;
    std::string m_id;
    std::string m_variableName;
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::string m_title = "curve";
    std::string m_suffix;
    QColor m_color = QColor("red");
    Qt::PenStyle m_lineStyle = Qt::SolidLine;
    int m_width = 1;
    int m_barWidth = 1;
    bool m_visible = true;
    bool m_highlighted = false;
    bool m_pointVisible = false;
    std::string m_xUnit;
    std::string m_yUnit;
    std::string m_xLabel;
    std::string m_yLabel;
    OrvexCurveType m_curveType = OrvexCurveType::Line;

    quint64 m_dataRevision = 0;
    mutable OrvexCurveExtremes m_rawExtremes;
    mutable quint64 m_rawExtremesRevision = 0;
};

} // namespace Gui::Widget
