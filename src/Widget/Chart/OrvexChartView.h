#pragma once

#include "OrvexQtUIBase_export.h"
#include "Widget/Chart/ChartMarkerTypes.h"
#include "Widget/Chart/OrvexCurveTypes.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPointer>
#include <QtCharts/QChartView>

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

class QAction;
class QMenu;
class QRubberBand;
class QTimer;

namespace QtCharts {
class QCategoryAxis;
class QLineSeries;
class QLogValueAxis;
class QPolarChart;
class QValueAxis;
class QAbstractAxis;
} // namespace QtCharts

namespace Gui::Widget {

class OrvexAngularLabelsItem;
class OrvexAxisLabelEdit;
class OrvexBarsItem;
class OrvexBorderItem;
class OrvexChartMarkerManager;
class OrvexCurve;
class OrvexCurveManager;
class OrvexLegendItem;
class OrvexLegendManipulator;
class OrvexLegendTipItem;
class OrvexLineMarkersItem;
class OrvexPointMarkersItem;
class OrvexPolarChartAngularTitleItem;
class OrvexProbeItem;

/**
 * The interactive chart: curves of an `OrvexCurveManager` drawn as a line,
 * bar or polar plot, with markers, probe, legend and both context menus.
 *
 * Made by `createChartView` (the constructor is protected), which runs
 * `init()`. Defaults: line view, auto limits and auto divisions on both axes,
 * log axes off (base 10), dB off, rubber band zoom off, auto tip on, legend
 * visible and interactive, 8 angular and 5 magnitude divisions, every menu
 * entry enabled, magnitude auto limits on, zoom factor 1, no data shown as
 * 0..100 on both axes.
 *
 * Large curves: each series is handed only what can be seen. For curves with
 * sorted X the visible slice is found by binary search and reduced to the
 * first, last, lowest and highest point of every device-pixel column of the
 * plot area, which draws the same pixels as the full line. Other curves and
 * polar plots drop consecutive points that land on the same pixel. Series are
 * rebuilt (one `replace` each) after zoom, pan, resize and data changes; the
 * curves keep the full data for fitting, probing, markers and files.
 *
 * Operations made by the user (markers, import/export, reset, view type,
 * property changes) are recorded as Python statements addressed by
 * `variableName()` ("Chart_<n>", unique in the process).
 */
class ORVEXQTUIBASE_EXPORT OrvexChartView : public QtCharts::QChartView
{
    Q_OBJECT

public:
    enum ViewType { Line = 0, Bar = 1, Polar = 2 };
    /// Which axes `axes()` answers.
    enum AxesType { HorizontalAxes = 0, VerticalAxes = 1, AllAxes = 2 };
    /// Flavour of the CSV export entry.
    enum ExportType { CommaSeparated = 0, BlankSeparated = 1 };

    /**
     * Colour and font per chart component: "Title", "Axes Labels", "Legend",
     * "Axes Divisions", "Markers". Unknown names answer black and the
     * default font.
     */
    struct ORVEXQTUIBASE_EXPORT OrvexChartConfiguration
    {
        struct Entry
        {
            QColor color;
            QFont font;
        };
        std::map<std::string, Entry> components;

        QColor color(const std::string& component) const;
        QFont font(const std::string& component) const;
        bool operator==(const OrvexChartConfiguration& other) const;
    };

    /// Result of the nice tick step: the range widened to whole steps, the
    /// step and the tick count the pixel spacing allows.
    struct TickLayout
    {
        double min = 0;
        double max = 0;
        double step = 0;
        int count = 1;
    };

    static OrvexChartView* createChartView(QWidget* parent = nullptr);
    ~OrvexChartView() override;

    /// Nice tick step for (min, max) on an axis @p length px long with one
    /// tick every @p spacing px and at most @p maxCount ticks.
    static TickLayout calculateNiceStep(double min, double max, double length, double spacing, int maxCount);

    const std::string& id() const { return m_id; }
    const std::string& variableName() const { return m_variableName; }

    std::shared_ptr<OrvexCurveManager> getCurveManager() const { return m_curveManager; }
    std::shared_ptr<OrvexChartMarkerManager> getMarkerManager() const { return m_markerManager; }

    // Operations
    void clear();
    void reset();
    void repaint();
    void fitView();
    void recalculateRange(bool zooming);
    void refreshAllMarkersPosition();
    bool changeViewTypeTo(ViewType type);
    ViewType getViewType() const { return m_viewType; }
    bool isPolarChart() const { return m_viewType == Polar; }
    /// Rebuilds the series from the curve model (new, removed, restyled curves).
    void updateCurves();

    void setTitle(const std::string& title);
    std::string title() const { return m_title; }
    void setXLabel(const std::string& label);
    std::string xLabel() const { return m_xLabel; }
    void setYLabel(const std::string& label);
    std::string yLabel() const { return m_yLabel; }
    void setAngularLabel(const std::string& label);
    std::string angularLabel() const { return m_angularLabel; }
    void setMagnitudeLabel(const std::string& label);
    std::string magnitudeLabel() const { return m_magnitudeLabel; }

    // Ranges
    void setRangeX(double min, double max);
    void setRangeX(const std::pair<double, double>& range) { setRangeX(range.first, range.second); }
    void setRangeY(double min, double max);
    void setRangeY(const std::pair<double, double>& range) { setRangeY(range.first, range.second); }
    void setRangeAngular(double min, double max);
    void setRangeAngular(const std::pair<double, double>& range) { setRangeAngular(range.first, range.second); }
    void setRangeMagnitude(double min, double max);
    void setRangeMagnitude(const std::pair<double, double>& range) { setRangeMagnitude(range.first, range.second); }
    /// The range the axes show now.
    std::pair<double, double> getRangeX() const;
    std::pair<double, double> getRangeY() const;
    std::pair<double, double> getRangeAngular() const;
    std::pair<double, double> getRangeMagnitude() const;
    /// (min, max) over the visible curves; (max double, lowest double) without data.
    std::pair<double, double> getDataRangeX() const;
    std::pair<double, double> getDataRangeY() const;

    // Steps and divisions
    double getStepX() const { return m_stepX; }
    void setStepX(double step);
    double getStepY() const { return m_stepY; }
    void setStepY(double step);
    double getAngularDivisions() const { return m_angularDivisions; }
    void setAngularDivisions(double divisions);
    double getMagnitudeDivisions() const { return m_magnitudeDivisions; }
    void setMagnitudeDivisions(double divisions);

    // Flags
    bool isAutoLimitsX() const { return m_autoLimitsX; }
    void setAutoLimitsX(bool on);
    bool isAutoLimitsY() const { return m_autoLimitsY; }
    void setAutoLimitsY(bool on);
    bool isAutoDivisionsX() const { return m_autoDivisionsX; }
    void setAutoDivisionsX(bool on);
    bool isAutoDivisionsY() const { return m_autoDivisionsY; }
    void setAutoDivisionsY(bool on);
    bool isMagnitudeAutoLimits() const { return m_magnitudeAutoLimits; }
    void setMagnitudeAutoLimits(bool on);
    bool isMagnitudeNormalized() const { return m_magnitudeNormalized; }
    void setMagnitudeNormalized(bool on);
    bool useXLog() const { return m_useXLog; }
    void setUseXLog(bool on);
    bool useYLog() const { return m_useYLog; }
    void setUseYLog(bool on);
    double getXLogBase() const { return m_xLogBase; }
    void setXLogBase(double base);
    double getYLogBase() const { return m_yLogBase; }
    void setYLogBase(double base);
    bool useDB() const { return m_useDB; }
    void setUseDB(bool on);
    bool useRubberBandZoom() const { return m_useRubberBandZoom; }
    void setUseRubberBandZoom(bool on);
    bool useAutoTip() const { return m_useAutoTip; }
    void setUseAutoTip(bool on);
    bool legendVisibility() const { return m_legendVisible; }
    void setLegendVisibility(bool visible);
    bool legendInteractive() const { return m_legendInteractive; }
    void setLegendInteractive(bool interactive);
    double zoomFactor() const { return m_zoomFactor; }
    void setZoomFactor(double factor) { m_zoomFactor = factor; }
    bool isZooming() const { return m_zooming; }
    void setZooming(bool zooming) { m_zooming = zooming; }

    // Which menu entries and features are offered
    void enablePropertyAction(bool on) { m_enableProperty = on; }
    bool isPropertyActionEnabled() const { return m_enableProperty; }
    void enableChangeViewType(bool on) { m_enableChangeViewType = on; }
    bool isChangeViewTypeEnabled() const { return m_enableChangeViewType; }
    void enablePolarViewAction(bool on) { m_enablePolarView = on; }
    bool isPolarViewActionEnabled() const { return m_enablePolarView; }
    void enableDBAction(bool on) { m_enableDB = on; }
    bool isDBActionEnabled() const { return m_enableDB; }
    void enableXLogAction(bool on) { m_enableXLog = on; }
    bool isXLogActionEnabled() const { return m_enableXLog; }
    void enableYLogAction(bool on) { m_enableYLog = on; }
    bool isYLogActionEnabled() const { return m_enableYLog; }
    void enableImportAction(bool on) { m_enableImport = on; }
    bool isImportActionEnabled() const { return m_enableImport; }
    void enableExportAction(bool on) { m_enableExport = on; }
    bool isExportActionEnabled() const { return m_enableExport; }
    void enableMarkerAction(bool on) { m_enableMarker = on; }
    bool isMarkerActionEnabled() const { return m_enableMarker; }
    void enableProbePointHintAction(bool on);
    bool isProbePointHintActionEnabled() const { return m_enableProbeHint; }
    void enableAixsXTicksLabel(bool on);
    bool isAixsXTicksLabelEnabled() const { return m_enableXTicksLabel; }

    // Flags read by the graphics items
    void setTransparentBackground(bool on);
    bool transparentBackground() const { return m_transparentBackground; }
    void setDrawConnector(bool on);
    bool drawConnector() const { return m_drawConnector; }
    void setMatchTextColorToLine(bool on);
    bool matchTextColorToLine() const { return m_matchTextColorToLine; }
    void setNamesInLabels(bool on);
    bool namesInLabels() const { return m_namesInLabels; }

    /// Off draws every point (for comparison); on by default.
    void setDecimationEnabled(bool on);
    bool decimationEnabled() const { return m_decimationEnabled; }

    // Configuration
    const OrvexChartConfiguration& getConfiguration() const { return m_configuration; }
    void setConfiguration(const OrvexChartConfiguration& configuration);
    void updateComponentsColor(std::string component, QColor& color);
    void updateComponentsFont(std::string component, QFont& font);

    // Axes
    QtCharts::QValueAxis* axisX() const { return m_axisX; }
    QtCharts::QValueAxis* axisY() const { return m_axisY; }
    QtCharts::QLogValueAxis* axisXLog() const { return m_axisXLog; }
    QtCharts::QLogValueAxis* axisYLog() const { return m_axisYLog; }
    QtCharts::QValueAxis* angularAxis() const { return m_angularAxis; }
    QtCharts::QValueAxis* magnitudeAxis() const { return m_magnitudeAxis; }
    QList<QtCharts::QAbstractAxis*> axes(AxesType type, QtCharts::QLineSeries* series = nullptr) const;
    /// The series drawing @p curveId, or null.
    QtCharts::QLineSeries* seriesOf(const std::string& curveId) const;

    // Coordinates: scene positions of data points and back, as the axes show them.
    QPointF valueToScene(const QPointF& value) const;
    QPointF sceneToValue(const QPointF& scenePos) const;
    QRectF plotArea() const;

    /// Nearest data point to @p scenePos (in pixels) over the visible curves,
    /// with the id of its curve; an empty id when there is none.
    std::pair<QPointF, std::string> findClosestPointInAllCurves(const QPointF& scenePos) const;
    /// Nearest point of one curve; false when the curve has no data.
    bool findClosestPointInCurve(const QPointF& scenePos, const std::string& curveId, QPointF& result) const;
    /**
     * Where a line marker through @p point (data coordinates) meets the curve:
     * a horizontal line keeps Y and takes the X of the crossing nearest to
     * point.x(); a vertical line keeps X and takes the curve's Y there.
     * Answers false (point untouched) when the line misses the curve.
     */
    bool lineIntersectCurve(QPointF& point, MarkerType type, const std::string& curveId) const;

    QImage captureImage(int width, int height);
    bool saveImage(const std::string& path, int width, int height);

    /// Emits `configureRequested()`, then opens the configuration dialog
    /// (modal, deleted on close).
    void showConfigureDialog();
    /// While paused, setters do not record their own property statements;
    /// the configuration dialog records one statement for all of them.
    void setPropertyRecordingPaused(bool paused) { m_propertyRecordingPaused = paused; }
    bool propertyRecordingPaused() const { return m_propertyRecordingPaused; }

    /// JSON curve files; an empty path asks the user. Recorded.
    bool importJson(const QString& path = QString());
    bool exportJson(const QString& path = QString());

    /// CSV curve files; an empty path or list asks the user. Import adds
    /// curves to the current group and fits. Answer false when nothing was
    /// written or read.
    bool exportDataToCommaCSV(std::string path);
    bool exportDataToBlankCSV(std::string path);
    bool importDataFromCommaCSV(std::vector<std::string> files);
    bool importDataFromBlankCSV(std::vector<std::string> files);
    void setExportType(ExportType type) { m_exportType = type; }
    ExportType exportType() const { return m_exportType; }

    /// Writes the test dump to @p path; false when it cannot be written.
    bool dumpViewInformation(const QString& path);

    /// Legend entry texts in drawing order.
    QStringList legendLabels() const;
    OrvexProbeItem* probeItem() const { return m_probeItem; }
    OrvexLegendItem* legendItem() const { return m_legendItem; }
    OrvexLegendTipItem* legendTipItem() const { return m_legendTipItem; }
    OrvexBarsItem* barsItem() const { return m_barsItem; }
    OrvexAxisLabelEdit* axisLabelEdit() const { return m_axisLabelEdit; }

    /// Places the probe on the curve point nearest to @p scenePos.
    void moveProbeTo(const QPointF& scenePos);
    void hideProbe();

    /// Rebuilds the decimated series now instead of at the next event loop turn.
    void flushSeries();

signals:
    void axesUpdate();
    void fitCompleted();
    void focusIn();
    void configureRequested();

protected:
    explicit OrvexChartView(QWidget* parent = nullptr);
    void init();

    void createChart();
    void createPolarChart();
    void initCartesianAxes(QtCharts::QChart* chart);
    void initPolarAxes(QtCharts::QPolarChart* chart);
    void initLegend();
    void initConfiguration();
    void initSupplementaryGraphicItems();
    void releaseSupplementaryGraphicItems();
    void switchAxes();
    void updateLinesProperties();
    void updateLegendGeometry();
    void updateAxisTickLabels(QtCharts::QCategoryAxis* axis);
    static std::map<double, std::string> createTickLabels(double min, double max, int count, double step,
                                                          const QString& format = QString());
    static QString formatLabel(const QString& format, const QByteArray& letter, double value);
    void recalculateCartesianAxisRange(QtCharts::QValueAxis* axis, double min, double max);
    void recalculateLogAxisRange(QtCharts::QLogValueAxis* axis, double min, double max);
    void recalculatePolarAxisRange();
    /// Clamps to [-1e40, 1e40] ([1e-50, 1e50] for @p logScale); true when clamped.
    static bool limitRange(double& min, double& max, bool logScale);
    /// Widens a span of 1e-9 or less; true when changed. @p keepPositive
    /// keeps the result above zero (log axes).
    static bool limitSpanPrecision(double& min, double& max, bool keepPositive);
    static bool isRangeValid(std::pair<double, double> range);
    void slotZoom(double factor, QPointF center = QPointF(-1, -1));
    void popupRightMenu(QMouseEvent* event);
    bool canInteract(QPoint pos) const;
    /// 0 none, 1 the X axis title, 2 the Y axis title.
    int detectAxisLabelClick(const QPointF& scenePos) const;
    void handleLegendHovered(const QPointF& scenePos, bool hovered);
    void setCursorStyle();
    /// Asks for a file ("Export file") and writes the test dump there.
    void dumpViewInformation();

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    static std::string generateUniqueVariableName();
    static std::unordered_set<std::string> g_existingVariableNames;

private:
    struct SeriesState;

    bool exportCsv(const std::string& path, ExportType type);
    bool importCsv(const std::vector<std::string>& files, ExportType type);
    void addTestCurves();
    void setTestPlotArea();
    void addMarkerAt(MarkerType type, const QPointF& scenePos);
    QMenu* buildChartMenu(const QPointF& scenePos);
    QMenu* buildMarkerMenu();
    void scheduleSeriesUpdate();
    void rebuildSeries(SeriesState& state);
    void connectAxis(QtCharts::QAbstractAxis* axis);
    void applyConfiguration();
    void applyTitles();
    OrvexCurveDataType shownDataType() const;
    std::vector<std::shared_ptr<OrvexCurve>> visibleCurves() const;
    void recordProperty(const std::string& key, const std::string& value);
    void afterRangeChange();
    /// Stores an axis setting and lays the axes out again.
    template <typename T>
    void setAxisSetting(T& member, T value)
    {
        member = value;
        recalculateRange(false);
    }

    std::string m_id;
    std::string m_variableName;
    std::shared_ptr<OrvexCurveManager> m_curveManager;
    std::shared_ptr<OrvexChartMarkerManager> m_markerManager;

    ViewType m_viewType = Line;
    std::string m_title;
    std::string m_xLabel;
    std::string m_yLabel;
    std::string m_angularLabel;
    std::string m_magnitudeLabel;
    std::pair<double, double> m_rangeX{0, 100};
    std::pair<double, double> m_rangeY{0, 100};
    std::pair<double, double> m_rangeAngular{0, 360};
    std::pair<double, double> m_rangeMagnitude{0, 100};
    double m_stepX = 10;
    double m_stepY = 10;
    double m_angularDivisions = 8;
    double m_magnitudeDivisions = 5;
    bool m_autoLimitsX = true;
    bool m_autoLimitsY = true;
    bool m_autoDivisionsX = true;
    bool m_autoDivisionsY = true;
    bool m_magnitudeAutoLimits = true;
    bool m_magnitudeNormalized = false;
    bool m_useXLog = false;
    bool m_useYLog = false;
    double m_xLogBase = 10;
    double m_yLogBase = 10;
    bool m_useDB = false;
    bool m_useRubberBandZoom = false;
    bool m_useAutoTip = true;
    bool m_legendVisible = true;
    bool m_legendInteractive = true;
    double m_zoomFactor = 1;
    bool m_zooming = false;
    bool m_enableProperty = true;
    bool m_enableChangeViewType = true;
    bool m_enablePolarView = true;
    bool m_enableDB = true;
    bool m_enableXLog = true;
    bool m_enableYLog = true;
    bool m_enableImport = true;
    bool m_enableExport = true;
    bool m_enableMarker = true;
    bool m_enableProbeHint = true;
    bool m_enableXTicksLabel = true;
    bool m_transparentBackground = false;
    bool m_drawConnector = true;
    bool m_matchTextColorToLine = false;
    bool m_namesInLabels = false;
    bool m_decimationEnabled = true;
    bool m_propertyRecordingPaused = false;
    ExportType m_exportType = CommaSeparated;
    OrvexChartConfiguration m_configuration;

    QtCharts::QValueAxis* m_axisX = nullptr;
    QtCharts::QValueAxis* m_axisY = nullptr;
    QtCharts::QLogValueAxis* m_axisXLog = nullptr;
    QtCharts::QLogValueAxis* m_axisYLog = nullptr;
    QtCharts::QValueAxis* m_angularAxis = nullptr;
    QtCharts::QValueAxis* m_magnitudeAxis = nullptr;

    std::unordered_map<std::string, std::unique_ptr<SeriesState>> m_series;
    QTimer* m_seriesTimer = nullptr;
    bool m_seriesDirty = false;
    bool m_initialising = true;
    bool m_rubberBandActive = false;
    QPoint m_rubberBandOrigin;
    bool m_panning = false;
    QPoint m_panLast;

    OrvexProbeItem* m_probeItem = nullptr;
    OrvexBarsItem* m_barsItem = nullptr;
    OrvexBorderItem* m_borderItem = nullptr;
    OrvexAngularLabelsItem* m_angularLabelsItem = nullptr;
    OrvexPolarChartAngularTitleItem* m_angularTitleItem = nullptr;
    OrvexLegendItem* m_legendItem = nullptr;
    OrvexLegendTipItem* m_legendTipItem = nullptr;
    OrvexLineMarkersItem* m_lineMarkersItem = nullptr;
    OrvexPointMarkersItem* m_pointMarkersItem = nullptr;
    OrvexLegendManipulator* m_legendManipulator = nullptr;
    OrvexAxisLabelEdit* m_axisLabelEdit = nullptr;
    QRubberBand* m_rubberBand = nullptr;
    QAction* m_continuousLineAction = nullptr;
    QImage m_captureBuffer;
};

} // namespace Gui::Widget
