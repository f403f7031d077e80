#include "Widget/Chart/OrvexChartView.h"

#include "Script/OrvexQtUIBasePythonUtility.h"
#include "Widget/Chart/ChartMarkerGroup.h"
#include "Widget/Chart/Marker.h"
#include "Widget/Chart/OrvexAngularLabelsItem.h"
#include "Widget/Chart/OrvexAxisLabelEdit.h"
#include "Widget/Chart/OrvexBarsItem.h"
#include "Widget/Chart/OrvexBorderItem.h"
#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveConfigureDialog.h"
#include "Widget/Chart/OrvexCurveCsvFile.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"
#include "Widget/Chart/OrvexLegendItem.h"
#include "Widget/Chart/OrvexLegendManipulator.h"
#include "Widget/Chart/OrvexLegendTipItem.h"
#include "Widget/Chart/OrvexLineMarkersItem.h"
#include "Widget/Chart/OrvexPointMarkersItem.h"
#include "Widget/Chart/OrvexPolarChartAngularTitleItem.h"
#include "Widget/Chart/OrvexProbeItem.h"
#include "Widget/Chart/OrvexSeriesDecimator.h"
#include "Widget/Chart/PointMarker.h"

#include <QActionGroup>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGraphicsLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QRubberBand>
#include <QTextStream>
#include <QTimer>
#include <QUuid>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QLineSeries>
#include <QtCharts/QLogValueAxis>
#include <QtCharts/QPolarChart>
#include <QtCharts/QValueAxis>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>

using namespace QtCharts;

namespace Gui::Widget {

std::unordered_set<std::string> OrvexChartView::g_existingVariableNames;

namespace {

constexpr double kZoomIn = 1.2;
constexpr double kZoomOut = 0.8333333333333334;
constexpr double kClamp = 1e40;
constexpr double kLogLow = 1e-50;
constexpr double kLogHigh = 1e50;
constexpr double kSpanPrecision = 1e-9;

QString number(double value)
{
    return QString::number(value, 'g', 6);
}

QString flag(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

std::string pyBool(bool value)
{
    return value ? "True" : "False";
}

// "%.<d>f" with as many decimals as the step's decimal exponent asks for.
QString defaultTickFormat(double step)
{
    const int decimals =
        std::isfinite(step) && step > 0 ? std::max(0, -static_cast<int>(std::floor(std::log10(step)))) : 0;
    return QStringLiteral("%.%1f").arg(decimals);
}

QFont componentFont(int pointSize)
{
    QFont font;
    font.setPointSize(pointSize);
    font.setStyleName(QStringLiteral("Regular"));
    return font;
}

// Merges group ranges; empty groups answer (max, lowest) and drop out.
std::pair<double, double> mergedRange(const OrvexCurveManager& manager, bool xAxis)
{
    std::pair<double, double> range{std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
    for (const auto& group : manager.getAllGroups(true)) {
        const auto r = group->groupRange(xAxis);
        range.first = std::min(range.first, r.first);
        range.second = std::max(range.second, r.second);
    }
    return range;
}

} // namespace

// What the view keeps per drawn curve.
struct OrvexChartView::SeriesState
{
    std::weak_ptr<OrvexCurve> curve;
    QLineSeries* series = nullptr;
    QVector<QPointF> points; // reused buffer for replace()
};

// ---------------------------------------------------------------- configuration

QColor OrvexChartView::OrvexChartConfiguration::color(const std::string& component) const
{
    const auto it = components.find(component);
    return it == components.end() ? QColor(Qt::black) : it->second.color;
}

QFont OrvexChartView::OrvexChartConfiguration::font(const std::string& component) const
{
    const auto it = components.find(component);
    return it == components.end() ? QFont() : it->second.font;
}

bool OrvexChartView::OrvexChartConfiguration::operator==(const OrvexChartConfiguration& other) const
{
    if (components.size() != other.components.size())
        return false;
    for (const auto& [name, entry] : components) {
        const auto it = other.components.find(name);
        if (it == other.components.end() || it->second.color != entry.color || it->second.font != entry.font)
            return false;
    }
    return true;
}

// ---------------------------------------------------------------- construction

OrvexChartView* OrvexChartView::createChartView(QWidget* parent)
{
    auto* view = new OrvexChartView(parent);
    view->init();
    return view;
}

OrvexChartView::OrvexChartView(QWidget* parent)
    : QChartView(parent),
      m_id(QUuid::createUuid().toString().toStdString()),
      m_variableName(generateUniqueVariableName())
{
}

OrvexChartView::~OrvexChartView()
{
    // Items and series point back at the view; drop them while it is whole.
    releaseSupplementaryGraphicItems();
    if (m_curveManager)
        disconnect(m_curveManager.get(), nullptr, this, nullptr);
    for (const auto& [id, state] : m_series) {
        if (const auto curve = state->curve.lock())
            disconnect(curve.get(), nullptr, this, nullptr);
    }
    m_series.clear();
}

std::string OrvexChartView::generateUniqueVariableName()
{
    for (int k = 1;; ++k) {
        std::string name = "Chart_" + std::to_string(k);
        if (g_existingVariableNames.insert(name).second)
            return name;
    }
}

void OrvexChartView::init()
{
    m_curveManager = std::make_shared<OrvexCurveManager>(this);
    m_markerManager = std::make_shared<OrvexChartMarkerManager>(this);
    connect(m_curveManager.get(), &OrvexCurveManager::curveAdded, this, [this] {
        // Several curves are often added in a row; build their series once.
        QTimer::singleShot(0, this, &OrvexChartView::updateCurves);
    });
    connect(m_curveManager.get(), &OrvexCurveManager::curveRemoving, this, [this](OrvexCurve* curve) {
        const auto it = m_series.find(curve->id());
        if (it == m_series.end())
            return;
        disconnect(curve, nullptr, this, nullptr);
        if (chart() && it->second->series) {
            chart()->removeSeries(it->second->series);
            delete it->second->series;
        }
        m_series.erase(it);
        if (m_probeItem && m_probeItem->curveId() == curve->id())
            m_probeItem->clearProbe();
        if (m_legendItem)
            m_legendItem->refresh();
    });
    connect(m_markerManager.get(), &OrvexChartMarkerManager::markersChanged, this, [this] {
        if (m_lineMarkersItem)
            m_lineMarkersItem->refresh();
        if (m_pointMarkersItem)
            m_pointMarkersItem->refresh();
    });

    m_seriesTimer = new QTimer(this);
    m_seriesTimer->setSingleShot(true);
    m_seriesTimer->setInterval(0);
    connect(m_seriesTimer, &QTimer::timeout, this, &OrvexChartView::flushSeries);

    // Overlay items follow the plot area, which moves under them on every
    // layout; a spatial index would go stale, and the scene is small.
    scene()->setItemIndexMethod(QGraphicsScene::NoIndex);
    m_continuousLineAction = new QAction(QStringLiteral("Continuous Line"), this);
    m_rubberBand = new QRubberBand(QRubberBand::Rectangle, viewport());
    m_rubberBand->hide();
    QChartView::setRubberBand(QChartView::NoRubberBand);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    viewport()->installEventFilter(this);
    setFocusPolicy(Qt::StrongFocus);

    if (isPolarChart())
        createPolarChart();
    else
        createChart();
    initConfiguration();
    initLegend();
    initSupplementaryGraphicItems();
    m_axisLabelEdit = new OrvexAxisLabelEdit(this);
    m_legendManipulator = new OrvexLegendManipulator(this);
    fitView();
    m_initialising = false;
}

void OrvexChartView::createChart()
{
    auto* chart = new QChart();
    chart->legend()->hide();
    chart->setAnimationOptions(QChart::NoAnimation);
    initCartesianAxes(chart);
    QChart* old = this->chart();
    setChart(chart);
    if (old)
        old->deleteLater();
    connect(chart, &QChart::plotAreaChanged, this, [this] {
        scheduleSeriesUpdate();
        afterRangeChange();
    });
    applyTitles();
}

void OrvexChartView::createPolarChart()
{
    auto* chart = new QPolarChart();
    chart->legend()->hide();
    chart->setAnimationOptions(QChart::NoAnimation);
    initPolarAxes(chart);
    QChart* old = this->chart();
    setChart(chart);
    if (old)
        old->deleteLater();
    connect(chart, &QChart::plotAreaChanged, this, [this] {
        scheduleSeriesUpdate();
        afterRangeChange();
    });
    applyTitles();
}

void OrvexChartView::connectAxis(QAbstractAxis* axis)
{
    if (auto* value = qobject_cast<QValueAxis*>(axis))
        connect(value, &QValueAxis::rangeChanged, this, &OrvexChartView::scheduleSeriesUpdate);
    else if (auto* log = qobject_cast<QLogValueAxis*>(axis))
        connect(log, &QLogValueAxis::rangeChanged, this, &OrvexChartView::scheduleSeriesUpdate);
}

void OrvexChartView::initCartesianAxes(QChart* chart)
{
    m_angularAxis = nullptr;
    m_magnitudeAxis = nullptr;
    m_axisX = new QValueAxis(this);
    m_axisY = new QValueAxis(this);
    m_axisXLog = new QLogValueAxis(this);
    m_axisYLog = new QLogValueAxis(this);
    for (auto* axis : {m_axisX, m_axisY}) {
        // A dynamic axis must never see its default interval of 0.
        axis->setTickInterval(10);
        axis->setTickType(QValueAxis::TicksDynamic);
        connectAxis(axis);
    }
    m_axisX->setRange(m_rangeX.first, m_rangeX.second);
    m_axisY->setRange(m_rangeY.first, m_rangeY.second);
    m_axisXLog->setBase(m_xLogBase);
    m_axisYLog->setBase(m_yLogBase);
    m_axisXLog->setLabelFormat(QStringLiteral("%g"));
    m_axisYLog->setLabelFormat(QStringLiteral("%g"));
    connectAxis(m_axisXLog);
    connectAxis(m_axisYLog);
    chart->addAxis(m_useXLog ? static_cast<QAbstractAxis*>(m_axisXLog) : m_axisX, Qt::AlignBottom);
    chart->addAxis(m_useYLog ? static_cast<QAbstractAxis*>(m_axisYLog) : m_axisY, Qt::AlignLeft);
    m_axisX->setLabelsVisible(m_enableXTicksLabel);
    m_axisXLog->setLabelsVisible(m_enableXTicksLabel);
}

void OrvexChartView::initPolarAxes(QPolarChart* chart)
{
    m_axisX = m_axisY = nullptr;
    m_axisXLog = m_axisYLog = nullptr;
    m_angularAxis = new QValueAxis(this);
    m_magnitudeAxis = new QValueAxis(this);
    m_angularAxis->setLabelFormat(QStringLiteral("%g"));
    // The angle labels are drawn by their own item, away from the circle.
    m_angularAxis->setLabelsVisible(false);
    m_magnitudeAxis->setTickInterval(10);
    m_magnitudeAxis->setTickType(QValueAxis::TicksDynamic);
    // Markers are placed as soon as the chart lays out; the axes must not
    // show Qt's 0..1 default meanwhile.
    m_angularAxis->setRange(m_rangeAngular.first, m_rangeAngular.second);
    m_magnitudeAxis->setRange(m_rangeMagnitude.first, m_rangeMagnitude.second);
    connectAxis(m_angularAxis);
    connectAxis(m_magnitudeAxis);
    chart->addAxis(m_angularAxis, QPolarChart::PolarOrientationAngular);
    chart->addAxis(m_magnitudeAxis, QPolarChart::PolarOrientationRadial);
}

void OrvexChartView::initLegend()
{
    if (m_legendItem) {
        m_legendItem->setVisible(m_legendVisible);
        m_legendItem->refresh();
    }
}

void OrvexChartView::initConfiguration()
{
    QChart fresh;
    QValueAxis axis;
    m_configuration.components.clear();
    m_configuration.components["Title"] = {fresh.titleBrush().color(), componentFont(10)};
    m_configuration.components["Axes Labels"] = {axis.titleBrush().color(), componentFont(9)};
    m_configuration.components["Legend"] = {fresh.legend()->labelColor(), componentFont(10)};
    m_configuration.components["Axes Divisions"] = {axis.labelsBrush().color(), componentFont(9)};
    m_configuration.components["Markers"] = {QColor(Qt::black), componentFont(9)};
    applyConfiguration();
}

void OrvexChartView::applyConfiguration()
{
    QChart* c = chart();
    if (!c)
        return;
    c->setTitleBrush(m_configuration.color("Title"));
    c->setTitleFont(m_configuration.font("Title"));
    for (QAbstractAxis* axis : c->axes()) {
        axis->setTitleBrush(m_configuration.color("Axes Labels"));
        axis->setTitleFont(m_configuration.font("Axes Labels"));
        axis->setLabelsBrush(m_configuration.color("Axes Divisions"));
        axis->setLabelsFont(m_configuration.font("Axes Divisions"));
    }
    for (QGraphicsItem* item : std::initializer_list<QGraphicsItem*>{
             m_legendItem, m_probeItem, m_lineMarkersItem, m_pointMarkersItem, m_angularLabelsItem, m_angularTitleItem})
        if (item)
            item->update();
    if (m_legendItem)
        m_legendItem->refresh();
}

void OrvexChartView::applyTitles()
{
    if (!chart())
        return;
    chart()->setTitle(QString::fromStdString(m_title));
    if (m_axisX) {
        m_axisX->setTitleText(QString::fromStdString(m_xLabel));
        m_axisXLog->setTitleText(QString::fromStdString(m_xLabel));
        m_axisY->setTitleText(QString::fromStdString(m_yLabel));
        m_axisYLog->setTitleText(QString::fromStdString(m_yLabel));
    }
    if (m_angularAxis) {
        // Drawn by the angular title item; a title on the axis would sit on the circle.
        m_magnitudeAxis->setTitleText(QString::fromStdString(m_magnitudeLabel));
    }
    if (m_angularTitleItem)
        m_angularTitleItem->update();
}

void OrvexChartView::initSupplementaryGraphicItems()
{
    QGraphicsScene* s = scene();
    m_barsItem = new OrvexBarsItem(this);
    m_legendItem = new OrvexLegendItem(this);
    m_legendTipItem = new OrvexLegendTipItem(this);
    m_lineMarkersItem = new OrvexLineMarkersItem(this);
    m_pointMarkersItem = new OrvexPointMarkersItem(this);
    m_probeItem = new OrvexProbeItem(this);
    if (isPolarChart()) {
        m_angularLabelsItem = new OrvexAngularLabelsItem(this);
        m_angularTitleItem = new OrvexPolarChartAngularTitleItem(this);
        s->addItem(m_angularLabelsItem);
        s->addItem(m_angularTitleItem);
    } else {
        m_borderItem = new OrvexBorderItem(this);
        s->addItem(m_borderItem);
    }
    for (QGraphicsItem* item : std::initializer_list<QGraphicsItem*>{
             m_barsItem, m_lineMarkersItem, m_pointMarkersItem, m_legendItem, m_probeItem, m_legendTipItem})
        s->addItem(item);
    m_barsItem->setVisible(m_viewType == Bar);
    m_legendItem->setVisible(m_legendVisible);
    if (m_legendManipulator)
        m_legendManipulator->setLegend(m_legendItem);
}

void OrvexChartView::releaseSupplementaryGraphicItems()
{
    if (m_legendManipulator)
        m_legendManipulator->setLegend(nullptr);
    for (QGraphicsItem** item : std::initializer_list<QGraphicsItem**>{
             reinterpret_cast<QGraphicsItem**>(&m_probeItem), reinterpret_cast<QGraphicsItem**>(&m_barsItem),
             reinterpret_cast<QGraphicsItem**>(&m_borderItem), reinterpret_cast<QGraphicsItem**>(&m_angularLabelsItem),
             reinterpret_cast<QGraphicsItem**>(&m_angularTitleItem), reinterpret_cast<QGraphicsItem**>(&m_legendItem),
             reinterpret_cast<QGraphicsItem**>(&m_legendTipItem),
             reinterpret_cast<QGraphicsItem**>(&m_lineMarkersItem),
             reinterpret_cast<QGraphicsItem**>(&m_pointMarkersItem)}) {
        if (*item) {
            if ((*item)->scene())
                (*item)->scene()->removeItem(*item);
            delete *item;
            *item = nullptr;
        }
    }
}

// ---------------------------------------------------------------- curves and series

OrvexCurveDataType OrvexChartView::shownDataType() const
{
    if (m_useDB || (isPolarChart() && m_magnitudeNormalized))
        return OrvexCurveDataType::DbNormalizedData;
    return OrvexCurveDataType::RawData;
}

std::vector<std::shared_ptr<OrvexCurve>> OrvexChartView::visibleCurves() const
{
    std::vector<std::shared_ptr<OrvexCurve>> curves;
    for (const auto& group : m_curveManager->getAllGroups(true)) {
        for (const auto& curve : group->getAllCurves(true))
            curves.push_back(curve);
    }
    return curves;
}

void OrvexChartView::updateCurves()
{
    if (!chart())
        return;
    const OrvexCurveDataType type = shownDataType();
    std::unordered_set<std::string> present;
    for (const auto& group : m_curveManager->getAllGroups(false)) {
        for (const auto& curve : group->getAllCurves(false)) {
            present.insert(curve->id());
            curve->setDataType(type);
            auto& state = m_series[curve->id()];
            if (state && state->series)
                continue;
            state = std::make_unique<SeriesState>();
            state->curve = curve;
            state->series = new QLineSeries();
            OrvexCurve* raw = curve.get();
            connect(raw, &OrvexCurve::dataChanged, this, [this] {
                scheduleSeriesUpdate();
                if (m_markerManager)
                    m_markerManager->refreshAllMarkersPosition();
            });
            connect(raw, &OrvexCurve::visibilityChanged, this, &OrvexChartView::updateLinesProperties);
            connect(raw, &OrvexCurve::colorChanged, this, &OrvexChartView::updateLinesProperties);
            connect(raw, &OrvexCurve::titleChanged, this, &OrvexChartView::updateLinesProperties);
            connect(raw, &OrvexCurve::suffixChanged, this, &OrvexChartView::updateLinesProperties);
        }
    }
    for (auto it = m_series.begin(); it != m_series.end();) {
        if (present.count(it->first)) {
            ++it;
            continue;
        }
        if (it->second->series) {
            chart()->removeSeries(it->second->series);
            delete it->second->series;
        }
        it = m_series.erase(it);
    }
    switchAxes();
    updateLinesProperties();
    m_seriesDirty = true;
    flushSeries();
}

void OrvexChartView::switchAxes()
{
    QChart* c = chart();
    if (!c)
        return;
    QList<QAbstractAxis*> wanted;
    if (isPolarChart()) {
        wanted = {m_angularAxis, m_magnitudeAxis};
    } else {
        QAbstractAxis* x = m_useXLog ? static_cast<QAbstractAxis*>(m_axisXLog) : m_axisX;
        QAbstractAxis* y = m_useYLog ? static_cast<QAbstractAxis*>(m_axisYLog) : m_axisY;
        for (QAbstractAxis* axis : {static_cast<QAbstractAxis*>(m_axisX), static_cast<QAbstractAxis*>(m_axisXLog),
                                    static_cast<QAbstractAxis*>(m_axisY), static_cast<QAbstractAxis*>(m_axisYLog)}) {
            if (axis != x && axis != y && c->axes().contains(axis)) {
                c->removeAxis(axis);
                axis->setParent(this);
            }
        }
        if (!c->axes().contains(x))
            c->addAxis(x, Qt::AlignBottom);
        if (!c->axes().contains(y))
            c->addAxis(y, Qt::AlignLeft);
        wanted = {x, y};
    }
    for (const auto& [id, state] : m_series) {
        QLineSeries* series = state->series;
        if (!c->series().contains(series))
            c->addSeries(series);
        for (QAbstractAxis* axis : series->attachedAxes()) {
            if (!wanted.contains(axis))
                series->detachAxis(axis);
        }
        for (QAbstractAxis* axis : wanted) {
            if (!series->attachedAxes().contains(axis))
                series->attachAxis(axis);
        }
    }
    applyConfiguration();
    applyTitles();
}

void OrvexChartView::updateLinesProperties()
{
    for (const auto& [id, state] : m_series) {
        const auto curve = state->curve.lock();
        if (!curve || !state->series)
            continue;
        QPen pen(curve->color(), curve->width(), curve->lineStyle());
        pen.setCosmetic(true);
        state->series->setPen(pen);
        state->series->setPointsVisible(curve->pointVisible());
        state->series->setName(QString::fromStdString(curve->label()));
        const auto group = curve->group().lock();
        const bool shown = curve->visible() && (!group || group->visible());
        state->series->setVisible(shown && m_viewType != Bar);
    }
    updateLegendGeometry();
    if (m_barsItem)
        m_barsItem->update();
}

void OrvexChartView::updateLegendGeometry()
{
    if (m_legendItem)
        m_legendItem->refresh();
}

void OrvexChartView::scheduleSeriesUpdate()
{
    m_seriesDirty = true;
    if (m_seriesTimer && !m_seriesTimer->isActive())
        m_seriesTimer->start();
}

void OrvexChartView::flushSeries()
{
    if (!m_seriesDirty)
        return;
    m_seriesDirty = false;
    for (auto& [id, state] : m_series)
        rebuildSeries(*state);
    if (m_barsItem)
        m_barsItem->update();
}

void OrvexChartView::rebuildSeries(SeriesState& state)
{
    const auto curve = state.curve.lock();
    if (!curve || !state.series)
        return;
    const auto& x = curve->xData();
    const auto& y = curve->yData();
    const std::size_t n = std::min(x.size(), y.size());
    const QRectF area = plotArea();
    if (!m_decimationEnabled || area.width() <= 0 || area.height() <= 0) {
        OrvexSeriesDecimator::copyAll(x.data(), y.data(), n, state.points);
    } else if (!isPolarChart() && curve->xAscending()) {
        // Device coordinates as Qt Charts computes them when it paints: the
        // series item sits at the plot area's corner, shifted by the view.
        const QTransform toViewport = viewportTransform();
        const auto rangeX = getRangeX();
        const auto rangeY = getRangeY();
        OrvexSeriesDecimator::AxisMap xMap;
        xMap.min = rangeX.first;
        xMap.max = rangeX.second;
        xMap.length = area.width();
        // On a high-density screen the painter scales logical pixels.
        const double scale = viewport()->devicePixelRatioF();
        xMap.origin = (area.left() + toViewport.dx()) * scale;
        xMap.scale = scale;
        xMap.log = m_useXLog;
        xMap.base = m_xLogBase;
        OrvexSeriesDecimator::AxisMap yMap;
        yMap.min = rangeY.first;
        yMap.max = rangeY.second;
        yMap.length = area.height();
        yMap.origin = (area.top() + toViewport.dy()) * scale;
        yMap.scale = scale;
        yMap.log = m_useYLog;
        yMap.base = m_yLogBase;
        yMap.vertical = true;
        const QPen pen = state.series->pen();
        const bool onePixel = pen.style() == Qt::SolidLine && pen.widthF() <= 1 && pen.isCosmetic()
                              && !renderHints().testFlag(QPainter::Antialiasing);
        OrvexSeriesDecimator::m4(x.data(), y.data(), n, xMap, yMap,
                                 onePixel ? OrvexSeriesDecimator::OnePixelLine : OrvexSeriesDecimator::AnyPen,
                                 state.points);
    } else {
        OrvexSeriesDecimator::reduceInPixelSpace(
            x.data(), y.data(), n, [this](double px, double py) { return valueToScene(QPointF(px, py)); },
            state.points);
    }
    state.series->replace(state.points);
}

QLineSeries* OrvexChartView::seriesOf(const std::string& curveId) const
{
    const auto it = m_series.find(curveId);
    return it == m_series.end() ? nullptr : it->second->series;
}

QList<QAbstractAxis*> OrvexChartView::axes(AxesType type, QLineSeries* series) const
{
    if (!chart())
        return {};
    const QList<QAbstractAxis*> all = series ? series->attachedAxes() : chart()->axes();
    if (type == AllAxes)
        return all;
    QList<QAbstractAxis*> result;
    for (QAbstractAxis* axis : all) {
        const bool horizontal = axis->orientation() == Qt::Horizontal;
        if (horizontal == (type == HorizontalAxes))
            result.append(axis);
    }
    return result;
}

// ---------------------------------------------------------------- coordinates

QRectF OrvexChartView::plotArea() const
{
    return chart() ? chart()->plotArea().translated(chart()->pos()) : QRectF();
}

QPointF OrvexChartView::valueToScene(const QPointF& value) const
{
    const QRectF area = plotArea();
    if (isPolarChart()) {
        const auto ang = getRangeAngular();
        const auto mag = getRangeMagnitude();
        const double radius = std::min(area.width(), area.height()) / 2;
        const double r = mag.second > mag.first ? (value.y() - mag.first) / (mag.second - mag.first) * radius : 0;
        const double theta =
            ang.second > ang.first ? (value.x() - ang.first) / (ang.second - ang.first) * 2 * M_PI : 0;
        return area.center() + QPointF(r * std::sin(theta), -r * std::cos(theta));
    }
    auto axisPos = [](double v, std::pair<double, double> range, bool log, double origin, double length) {
        if (log) {
            v = std::log10(v);
            range = {std::log10(range.first), std::log10(range.second)};
        }
        const double span = range.second - range.first;
        return span != 0 ? origin + (v - range.first) / span * length : origin;
    };
    const double x = axisPos(value.x(), getRangeX(), m_useXLog, area.left(), area.width());
    const double y = axisPos(value.y(), getRangeY(), m_useYLog, area.bottom(), -area.height());
    return QPointF(x, y);
}

QPointF OrvexChartView::sceneToValue(const QPointF& scenePos) const
{
    const QRectF area = plotArea();
    if (isPolarChart()) {
        const auto ang = getRangeAngular();
        const auto mag = getRangeMagnitude();
        const double radius = std::min(area.width(), area.height()) / 2;
        const QPointF d = scenePos - area.center();
        double theta = std::atan2(d.x(), -d.y());
        if (theta < 0)
            theta += 2 * M_PI;
        const double r = std::hypot(d.x(), d.y());
        return QPointF(ang.first + theta / (2 * M_PI) * (ang.second - ang.first),
                       radius > 0 ? mag.first + r / radius * (mag.second - mag.first) : mag.first);
    }
    auto axisValue = [](double p, std::pair<double, double> range, bool log, double origin, double length) {
        if (log)
            range = {std::log10(range.first), std::log10(range.second)};
        const double v = length != 0 ? range.first + (p - origin) / length * (range.second - range.first)
                                     : range.first;
        return log ? std::pow(10.0, v) : v;
    };
    return QPointF(axisValue(scenePos.x(), getRangeX(), m_useXLog, area.left(), area.width()),
                   axisValue(scenePos.y(), getRangeY(), m_useYLog, area.bottom(), -area.height()));
}

// ---------------------------------------------------------------- ranges

OrvexChartView::TickLayout OrvexChartView::calculateNiceStep(double min, double max, double length, double spacing,
                                                             int maxCount)
{
    // Single precision with a 1/256 bias: the rounding the axes are built on.
    const float quotient = static_cast<float>(length) / static_cast<float>(spacing);
    int n = static_cast<int>(quotient + std::copysign(0.00390625f, quotient));
    n = n == 0 ? 1 : std::min(n, maxCount);
    const double span = std::fabs(max - min);
    const double raw = span / n;
    const double e = std::floor(std::log10(raw));
    const double f = raw / std::pow(10.0, e);
    double factor;
    if (span > 0 && std::fabs(std::fmod(span, 360.0)) < 1e-9) {
        if (f <= 1)
            factor = 1;
        else if (f <= 1.2)
            factor = 1.2;
        else if (f <= 2)
            factor = 2;
        else if (f <= 3)
            factor = 3;
        else if (f <= 4)
            factor = 4;
        else if (f <= 6)
            factor = 6;
        else
            factor = 9;
    } else if (f <= 1) {
        factor = 1;
    } else if (f <= 2) {
        factor = 2;
    } else if (f <= 5) {
        factor = 5;
    } else {
        factor = 10;
    }
    double step = std::pow(10.0, e) * factor;
    if (!(step >= 1e-9))
        step = 1e-9;
    TickLayout layout;
    layout.step = step;
    layout.min = std::floor(min / step) * step;
    layout.max = std::ceil(max / step) * step;
    layout.count = n;
    return layout;
}

bool OrvexChartView::limitRange(double& min, double& max, bool logScale)
{
    const double low = logScale ? kLogLow : -kClamp;
    const double high = logScale ? kLogHigh : kClamp;
    const double oldMin = min;
    const double oldMax = max;
    min = std::clamp(min, low, high);
    max = std::clamp(max, low, high);
    return min != oldMin || max != oldMax;
}

bool OrvexChartView::limitSpanPrecision(double& min, double& max, bool keepPositive)
{
    bool changed = false;
    while (max - min <= kSpanPrecision) {
        changed = true;
        if (min == max && std::fabs(min) < kSpanPrecision && std::fabs(max) < kSpanPrecision && !keepPositive) {
            min = -kSpanPrecision;
            max = kSpanPrecision;
        } else if (min == max && min == 0) {
            max = kSpanPrecision;
        } else {
            min *= 0.95;
            max *= 1.05;
            if (min > max)
                std::swap(min, max);
        }
    }
    return changed;
}

bool OrvexChartView::isRangeValid(std::pair<double, double> range)
{
    return std::isfinite(range.first) && std::isfinite(range.second) && range.first <= range.second
        && std::fabs(range.first) <= kClamp && std::fabs(range.second) <= kClamp;
}

std::pair<double, double> OrvexChartView::getRangeX() const
{
    if (m_useXLog && m_axisXLog)
        return {m_axisXLog->min(), m_axisXLog->max()};
    return m_axisX ? std::make_pair(m_axisX->min(), m_axisX->max()) : m_rangeX;
}

std::pair<double, double> OrvexChartView::getRangeY() const
{
    if (m_useYLog && m_axisYLog)
        return {m_axisYLog->min(), m_axisYLog->max()};
    return m_axisY ? std::make_pair(m_axisY->min(), m_axisY->max()) : m_rangeY;
}

std::pair<double, double> OrvexChartView::getRangeAngular() const
{
    return m_angularAxis ? std::make_pair(m_angularAxis->min(), m_angularAxis->max()) : m_rangeAngular;
}

std::pair<double, double> OrvexChartView::getRangeMagnitude() const
{
    return m_magnitudeAxis ? std::make_pair(m_magnitudeAxis->min(), m_magnitudeAxis->max()) : m_rangeMagnitude;
}

std::pair<double, double> OrvexChartView::getDataRangeX() const
{
    return mergedRange(*m_curveManager, true);
}

std::pair<double, double> OrvexChartView::getDataRangeY() const
{
    return mergedRange(*m_curveManager, false);
}

void OrvexChartView::setRangeX(double min, double max)
{
    m_rangeX = {min, max};
    recalculateRange(false);
}

void OrvexChartView::setRangeY(double min, double max)
{
    m_rangeY = {min, max};
    recalculateRange(false);
}

void OrvexChartView::setRangeAngular(double min, double max)
{
    m_rangeAngular = {min, max};
    recalculateRange(false);
}

void OrvexChartView::setRangeMagnitude(double min, double max)
{
    m_rangeMagnitude = {min, max};
    recalculateRange(false);
}

void OrvexChartView::recalculateCartesianAxisRange(QValueAxis* axis, double min, double max)
{
    const bool clamped = limitRange(min, max, false);
    const bool widened = limitSpanPrecision(min, max, false);
    const bool isX = axis == m_axisX;
    const QRectF area = plotArea();
    const TickLayout ticks = isX ? calculateNiceStep(min, max, area.width(), 50, 25)
                                 : calculateNiceStep(min, max, area.height(), 35, 20);
    const bool autoDivisions = isX ? m_autoDivisionsX : m_autoDivisionsY;
    const bool autoLimits = isX ? m_autoLimitsX : m_autoLimitsY;
    double interval = autoDivisions ? (ticks.step > 0 ? ticks.step : 10) : (isX ? m_stepX : m_stepY);
    // A user step that would draw thousands of ticks gives way to the computed one.
    if (!(interval > 0) || (ticks.max - ticks.min) / interval > 1000)
        interval = ticks.step;
    axis->setTickAnchor(ticks.min);
    axis->setTickInterval(interval);
    axis->setLabelFormat(defaultTickFormat(interval));
    if (!m_zooming || clamped || widened) {
        if (autoLimits)
            axis->setRange(ticks.min, ticks.max);
        else
            axis->setRange(min, max);
    }
}

void OrvexChartView::recalculateLogAxisRange(QLogValueAxis* axis, double min, double max)
{
    if (min <= 0)
        min = 1e-40;
    if (max <= 0)
        max = 1e-40;
    limitRange(min, max, true);
    if (min == max) {
        if (max >= 1e139)
            min /= 1e20;
        else
            max *= 1e20;
    }
    const bool isX = axis == m_axisXLog;
    const double base = isX ? m_xLogBase : m_yLogBase;
    const bool autoLimits = isX ? m_autoLimitsX : m_autoLimitsY;
    axis->setBase(base);
    if (autoLimits && !m_zooming) {
        const double lb = std::log(base);
        min = std::pow(base, std::floor(std::log(min) / lb + 1e-12));
        max = std::pow(base, std::ceil(std::log(max) / lb - 1e-12));
    }
    axis->setRange(min, max);
}

void OrvexChartView::recalculatePolarAxisRange()
{
    if (!m_angularAxis || !m_magnitudeAxis)
        return;
    const int divisions = std::max(1, static_cast<int>(m_angularDivisions));
    m_angularAxis->setRange(m_rangeAngular.first, m_rangeAngular.second);
    m_angularAxis->setTickCount(divisions + 1);
    std::pair<double, double> mag = m_rangeMagnitude;
    if (m_magnitudeAutoLimits && !m_zooming) {
        mag = getDataRangeY();
        if (!isRangeValid(mag))
            mag = {0, 100};
    }
    limitSpanPrecision(mag.first, mag.second, false);
    const double length = plotArea().height() / 2;
    const double spacing = length / std::max(1.0, m_magnitudeDivisions);
    const TickLayout ticks = calculateNiceStep(mag.first, mag.second, length, spacing > 0 ? spacing : 1, 20);
    m_magnitudeAxis->setTickAnchor(ticks.min);
    m_magnitudeAxis->setTickInterval(ticks.step);
    if (m_magnitudeAutoLimits && !m_zooming)
        m_magnitudeAxis->setRange(ticks.min, ticks.max);
    else
        m_magnitudeAxis->setRange(mag.first, mag.second);
}

void OrvexChartView::recalculateRange(bool zooming)
{
    // Every axis change makes Qt Charts re-stroke each series' whole path;
    // emptied first, the series cost nothing until their new points arrive.
    for (auto& [id, state] : m_series) {
        if (state->series && state->series->count() > 0)
            state->series->clear();
    }
    m_seriesDirty = true;
    const bool wasZooming = m_zooming;
    m_zooming = m_zooming || zooming;
    if (isPolarChart()) {
        recalculatePolarAxisRange();
    } else {
        if (!m_axisX || !m_axisY || (m_useXLog && !m_axisXLog) || (m_useYLog && !m_axisYLog)) {
            m_zooming = wasZooming;
            return;
        }
        if (!isRangeValid(m_rangeX) || !isRangeValid(m_rangeY)) {
            m_zooming = wasZooming;
            return;
        }
        if (m_useYLog)
            recalculateLogAxisRange(m_axisYLog, m_rangeY.first, m_rangeY.second);
        else
            recalculateCartesianAxisRange(m_axisY, m_rangeY.first, m_rangeY.second);
        if (m_useXLog)
            recalculateLogAxisRange(m_axisXLog, m_rangeX.first, m_rangeX.second);
        else
            recalculateCartesianAxisRange(m_axisX, m_rangeX.first, m_rangeX.second);
    }
    m_zooming = wasZooming;
    // Lay out the new tick labels now, so the series are reduced once, for
    // the plot area they will be drawn in.
    if (chart() && chart()->layout())
        chart()->layout()->activate();
    flushSeries();
    afterRangeChange();
    emit axesUpdate();
}

void OrvexChartView::afterRangeChange()
{
    if (m_markerManager)
        m_markerManager->refreshAllMarkersPosition();
    for (OrvexChartOverlayItem* item : std::initializer_list<OrvexChartOverlayItem*>{
             m_borderItem, m_angularLabelsItem, m_angularTitleItem, m_barsItem, m_probeItem, m_legendItem,
             m_lineMarkersItem, m_pointMarkersItem})
        if (item)
            item->refresh();
}

void OrvexChartView::fitView()
{
    auto rx = getDataRangeX();
    auto ry = getDataRangeY();
    if (!isRangeValid(rx))
        rx = {0, 100};
    if (!isRangeValid(ry))
        ry = {0, 100};
    limitSpanPrecision(rx.first, rx.second, false);
    limitSpanPrecision(ry.first, ry.second, false);
    m_rangeX = rx;
    m_rangeY = ry;
    m_rangeMagnitude = ry;
    recalculateRange(false);
    m_zoomFactor = 1;
    emit fitCompleted();
}

void OrvexChartView::slotZoom(double factor, QPointF center)
{
    if (!chart() || factor <= 0)
        return;
    const QRectF area = plotArea();
    m_zooming = true;
    if (isPolarChart()) {
        // Magnitude only: the angle always spans the circle.
        QSignalBlocker blockMagnitude(m_magnitudeAxis);
        const auto mag = getRangeMagnitude();
        m_rangeMagnitude = {mag.first, mag.first + (mag.second - mag.first) / factor};
        m_magnitudeAxis->setRange(m_rangeMagnitude.first, m_rangeMagnitude.second);
    } else {
        // Zooming about the centre keeps the data under it where it is.
        if (center.x() < 0 || center.y() < 0)
            center = area.center();
        auto zoomAxis = [factor](std::pair<double, double> range, double at, bool log) {
            if (log) {
                range = {std::log10(range.first), std::log10(range.second)};
                at = std::log10(at);
            }
            std::pair<double, double> result{at + (range.first - at) / factor, at + (range.second - at) / factor};
            if (log)
                result = {std::pow(10.0, result.first), std::pow(10.0, result.second)};
            return result;
        };
        const QPointF at = sceneToValue(center);
        m_rangeX = zoomAxis(getRangeX(), at.x(), m_useXLog);
        m_rangeY = zoomAxis(getRangeY(), at.y(), m_useYLog);
        if (isRangeValid(m_rangeX) && isRangeValid(m_rangeY)) {
            if (m_useXLog)
                m_axisXLog->setRange(m_rangeX.first, m_rangeX.second);
            else
                m_axisX->setRange(m_rangeX.first, m_rangeX.second);
            if (m_useYLog)
                m_axisYLog->setRange(m_rangeY.first, m_rangeY.second);
            else
                m_axisY->setRange(m_rangeY.first, m_rangeY.second);
        }
    }
    m_zoomFactor *= factor;
    recalculateRange(false);
    m_zooming = false;
}

// ---------------------------------------------------------------- operations

void OrvexChartView::clear()
{
    m_curveManager->removeAll();
    m_markerManager->clear();
    updateCurves();
    fitView();
}

void OrvexChartView::reset()
{
    for (const auto& curve : visibleCurves())
        curve->setDataType(shownDataType());
    switchAxes();
    fitView();
    refreshAllMarkersPosition();
    if (!m_initialising)
        Python::QtUIPysUtils::reset(m_variableName);
}

void OrvexChartView::repaint()
{
    scheduleSeriesUpdate();
    scene()->update();
    viewport()->update();
}

void OrvexChartView::refreshAllMarkersPosition()
{
    m_markerManager->refreshAllMarkersPosition();
}

bool OrvexChartView::changeViewTypeTo(ViewType type)
{
    if (type == m_viewType)
        return false;
    const bool polarChange = (type == Polar) != (m_viewType == Polar);
    m_viewType = type;
    if (polarChange) {
        releaseSupplementaryGraphicItems();
        for (auto& [id, state] : m_series) {
            if (state->series && chart())
                chart()->removeSeries(state->series);
            delete state->series;
            state->series = nullptr;
        }
        m_series.clear();
        if (type == Polar)
            createPolarChart();
        else
            createChart();
        applyConfiguration();
        initSupplementaryGraphicItems();
        initLegend();
        updateCurves();
        if (type == Polar)
            switchAxes();
        fitView();
    } else {
        updateCurves();
        recalculateRange(false);
        switchAxes();
    }
    if (m_barsItem)
        m_barsItem->setVisible(type == Bar);
    updateLinesProperties();
    refreshAllMarkersPosition();
    if (!m_initialising)
        recordProperty("'plot_type'", Python::QtUIPythonEnumMap::Instance().pythonText(type));
    return true;
}

void OrvexChartView::recordProperty(const std::string& key, const std::string& value)
{
    if (!m_initialising && !m_propertyRecordingPaused)
        Python::QtUIPysUtils::setProperty(m_variableName, key, value);
}

void OrvexChartView::setTitle(const std::string& title)
{
    if (title == m_title)
        return;
    m_title = title;
    applyTitles();
    recordProperty("'title'", Python::QtUIPysUtils::pyString(title));
}

void OrvexChartView::setXLabel(const std::string& label)
{
    if (label == m_xLabel)
        return;
    m_xLabel = label;
    applyTitles();
    recordProperty("'x_label'", Python::QtUIPysUtils::pyString(label));
}

void OrvexChartView::setYLabel(const std::string& label)
{
    if (label == m_yLabel)
        return;
    m_yLabel = label;
    applyTitles();
    recordProperty("'y_label'", Python::QtUIPysUtils::pyString(label));
}

void OrvexChartView::setAngularLabel(const std::string& label)
{
    m_angularLabel = label;
    applyTitles();
}

void OrvexChartView::setMagnitudeLabel(const std::string& label)
{
    m_magnitudeLabel = label;
    applyTitles();
}

void OrvexChartView::setStepX(double step)
{
    setAxisSetting(m_stepX, step);
}

void OrvexChartView::setStepY(double step)
{
    setAxisSetting(m_stepY, step);
}

void OrvexChartView::setAngularDivisions(double divisions)
{
    setAxisSetting(m_angularDivisions, divisions);
}

void OrvexChartView::setMagnitudeDivisions(double divisions)
{
    setAxisSetting(m_magnitudeDivisions, divisions);
}

void OrvexChartView::setAutoLimitsX(bool on)
{
    setAxisSetting(m_autoLimitsX, on);
}

void OrvexChartView::setAutoLimitsY(bool on)
{
    setAxisSetting(m_autoLimitsY, on);
}

void OrvexChartView::setAutoDivisionsX(bool on)
{
    setAxisSetting(m_autoDivisionsX, on);
}

void OrvexChartView::setAutoDivisionsY(bool on)
{
    setAxisSetting(m_autoDivisionsY, on);
}

void OrvexChartView::setMagnitudeAutoLimits(bool on)
{
    setAxisSetting(m_magnitudeAutoLimits, on);
}

void OrvexChartView::setMagnitudeNormalized(bool on)
{
    if (on == m_magnitudeNormalized)
        return;
    m_magnitudeNormalized = on;
    updateCurves();
    recalculateRange(false);
    recordProperty("'magnitude_normalized'", pyBool(on));
}

void OrvexChartView::setUseXLog(bool on)
{
    if (on == m_useXLog)
        return;
    m_useXLog = on;
    switchAxes();
    recordProperty("'x_log'", pyBool(on));
}

void OrvexChartView::setUseYLog(bool on)
{
    if (on == m_useYLog)
        return;
    m_useYLog = on;
    switchAxes();
    recordProperty("'y_log'", pyBool(on));
}

void OrvexChartView::setXLogBase(double base)
{
    setAxisSetting(m_xLogBase, base);
}

void OrvexChartView::setYLogBase(double base)
{
    setAxisSetting(m_yLogBase, base);
}

void OrvexChartView::setUseDB(bool on)
{
    if (on == m_useDB)
        return;
    m_useDB = on;
    updateCurves();
    fitView();
    recordProperty("'use_db'", pyBool(on));
}

void OrvexChartView::setUseRubberBandZoom(bool on)
{
    m_useRubberBandZoom = on;
}

void OrvexChartView::setUseAutoTip(bool on)
{
    m_useAutoTip = on;
    if (!on)
        hideProbe();
}

void OrvexChartView::setLegendVisibility(bool visible)
{
    m_legendVisible = visible;
    if (m_legendItem)
        m_legendItem->setVisible(visible);
    recordProperty("'legend_visible'", pyBool(visible));
}

void OrvexChartView::setLegendInteractive(bool interactive)
{
    m_legendInteractive = interactive;
}

void OrvexChartView::enableProbePointHintAction(bool on)
{
    m_enableProbeHint = on;
    if (!on)
        hideProbe();
}

void OrvexChartView::enableAixsXTicksLabel(bool on)
{
    m_enableXTicksLabel = on;
    if (m_axisX)
        m_axisX->setLabelsVisible(on);
    if (m_axisXLog)
        m_axisXLog->setLabelsVisible(on);
}

void OrvexChartView::setTransparentBackground(bool on)
{
    m_transparentBackground = on;
    if (m_probeItem)
        m_probeItem->update();
}

void OrvexChartView::setDrawConnector(bool on)
{
    m_drawConnector = on;
    if (m_probeItem)
        m_probeItem->update();
}

void OrvexChartView::setMatchTextColorToLine(bool on)
{
    m_matchTextColorToLine = on;
    if (m_probeItem)
        m_probeItem->update();
}

void OrvexChartView::setNamesInLabels(bool on)
{
    m_namesInLabels = on;
    if (m_probeItem)
        m_probeItem->refresh();
}

void OrvexChartView::setDecimationEnabled(bool on)
{
    m_decimationEnabled = on;
    m_seriesDirty = true;
    flushSeries();
}

void OrvexChartView::setConfiguration(const OrvexChartConfiguration& configuration)
{
    m_configuration = configuration;
    applyConfiguration();
}

void OrvexChartView::updateComponentsColor(std::string component, QColor& color)
{
    m_configuration.components[component].color = color;
    applyConfiguration();
}

void OrvexChartView::updateComponentsFont(std::string component, QFont& font)
{
    m_configuration.components[component].font = font;
    applyConfiguration();
}

// ---------------------------------------------------------------- tick labels

std::map<double, std::string> OrvexChartView::createTickLabels(double min, double max, int count, double step,
                                                               const QString& format)
{
    std::map<double, std::string> labels;
    static const QRegularExpression userFormat(QStringLiteral("%[\\-\\+#\\s\\d\\.\\'lhjztL]*([dicuoxfegXFEG])"));
    QString fmt;
    QByteArray letter;
    const auto match = userFormat.match(format);
    if (!format.isEmpty() && match.hasMatch()) {
        fmt = format;
        letter = match.captured(1).toLatin1();
    } else {
        fmt = defaultTickFormat(step);
        letter = "f";
    }
    if (!(step > 0) || count < 1)
        step = (max - min) / std::max(1, count);
    for (int i = 0; step > 0 && i < 10000; ++i) {
        const double value = min + i * step;
        if (value > max + step * 1e-9)
            break;
        labels[value] = formatLabel(fmt, letter, value).toStdString();
    }
    if (labels.empty())
        labels[min] = formatLabel(fmt, letter, min).toStdString();
    return labels;
}

QString OrvexChartView::formatLabel(const QString& format, const QByteArray& letter, double value)
{
    if (std::isnan(value))
        return QStringLiteral("nan");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("inf") : QStringLiteral("-inf");
    const QByteArray f = format.toLatin1();
    if (QByteArray("dicuoxX").contains(letter))
        return QString::asprintf(f.constData(), static_cast<long long>(std::llround(value)));
    return QString::asprintf(f.constData(), value);
}

void OrvexChartView::updateAxisTickLabels(QCategoryAxis* axis)
{
    if (!axis)
        return;
    for (const QString& label : axis->categoriesLabels())
        axis->remove(label);
    const double min = axis->min();
    const double max = axis->max();
    const int count = std::max(1, axis->tickCount() - 1);
    for (const auto& [value, text] : createTickLabels(min, max, count, (max - min) / count, axis->labelFormat()))
        axis->append(QString::fromStdString(text), value);
}

// ---------------------------------------------------------------- probing

std::pair<QPointF, std::string> OrvexChartView::findClosestPointInAllCurves(const QPointF& scenePos) const
{
    std::pair<QPointF, std::string> best{QPointF(), std::string()};
    double bestDistance = std::numeric_limits<double>::max();
    for (const auto& curve : visibleCurves()) {
        QPointF point;
        if (!findClosestPointInCurve(scenePos, curve->id(), point))
            continue;
        const double distance = QLineF(valueToScene(point), scenePos).length();
        if (distance < bestDistance) {
            bestDistance = distance;
            best = {point, curve->id()};
        }
    }
    return best;
}

bool OrvexChartView::findClosestPointInCurve(const QPointF& scenePos, const std::string& curveId,
                                             QPointF& result) const
{
    const auto curve = m_curveManager->getCurve(curveId);
    // Before the first layout every point maps to one spot; nothing is nearest.
    const QRectF area = plotArea();
    if (!curve || curve->dataSize() == 0 || area.width() <= 0 || area.height() <= 0)
        return false;
    const auto& x = curve->xData();
    const auto& y = curve->yData();
    const std::size_t n = std::min(x.size(), y.size());
    std::size_t first = 0;
    std::size_t last = n;
    if (!isPolarChart() && curve->xAscending()) {
        // Only points within 40 px along X can beat the nearest one there.
        const double lo = sceneToValue(scenePos - QPointF(40, 0)).x();
        const double hi = sceneToValue(scenePos + QPointF(40, 0)).x();
        std::tie(first, last) = OrvexSeriesDecimator::visibleSlice(x.data(), n, std::min(lo, hi), std::max(lo, hi));
    }
    double bestDistance = std::numeric_limits<double>::max();
    bool found = false;
    for (std::size_t i = first; i < last; ++i) {
        if (std::isnan(x[i]) || std::isnan(y[i]))
            continue;
        const QPointF p = valueToScene(QPointF(x[i], y[i]));
        const double dx = p.x() - scenePos.x();
        const double dy = p.y() - scenePos.y();
        const double distance = dx * dx + dy * dy;
        if (distance < bestDistance) {
            bestDistance = distance;
            result = QPointF(x[i], y[i]);
            found = true;
        }
    }
    return found;
}

bool OrvexChartView::lineIntersectCurve(QPointF& point, MarkerType type, const std::string& curveId) const
{
    const auto curve = m_curveManager->getCurve(curveId);
    if (!curve || curve->dataSize() == 0 || type == MarkerType::PointMarker)
        return false;
    const auto& x = curve->xData();
    const auto& y = curve->yData();
    const std::size_t n = std::min(x.size(), y.size());
    if (n == 1) {
        const bool hit = type == MarkerType::HorizontalLineMarker ? y[0] == point.y() : x[0] == point.x();
        if (hit)
            point = QPointF(x[0], y[0]);
        return hit;
    }
    bool found = false;
    double bestDistance = std::numeric_limits<double>::max();
    QPointF best;
    for (std::size_t i = 0; i + 1 < n; ++i) {
        const double a = type == MarkerType::HorizontalLineMarker ? y[i] : x[i];
        const double b = type == MarkerType::HorizontalLineMarker ? y[i + 1] : x[i + 1];
        const double v = type == MarkerType::HorizontalLineMarker ? point.y() : point.x();
        if ((v < std::min(a, b)) || (v > std::max(a, b)))
            continue;
        const double t = b != a ? (v - a) / (b - a) : 0;
        const QPointF crossing(x[i] + t * (x[i + 1] - x[i]), y[i] + t * (y[i + 1] - y[i]));
        const double distance = type == MarkerType::HorizontalLineMarker ? std::fabs(crossing.x() - point.x())
                                                                         : std::fabs(crossing.y() - point.y());
        if (distance < bestDistance) {
            bestDistance = distance;
            best = type == MarkerType::HorizontalLineMarker ? QPointF(crossing.x(), point.y())
                                                             : QPointF(point.x(), crossing.y());
            found = true;
        }
    }
    if (found)
        point = best;
    return found;
}

void OrvexChartView::moveProbeTo(const QPointF& scenePos)
{
    if (!m_probeItem || !m_enableProbeHint)
        return;
    const auto [point, curveId] = findClosestPointInAllCurves(scenePos);
    if (curveId.empty()) {
        m_probeItem->clearProbe();
        return;
    }
    m_probeItem->setProbe(point, curveId);
}

void OrvexChartView::hideProbe()
{
    if (m_probeItem)
        m_probeItem->clearProbe();
}

// ---------------------------------------------------------------- images and files

QImage OrvexChartView::captureImage(int width, int height)
{
    QChart* c = chart();
    if (!c || width <= 0 || height <= 0)
        return QImage();
    const QSizeF previous = c->size();
    const bool resized = previous != QSizeF(width, height);
    if (resized) {
        c->resize(width, height);
        if (c->layout())
            c->layout()->activate();
        recalculateRange(false);
    } else if (c->layout()) {
        // New axis labels may have moved the plot area since the last layout.
        c->layout()->activate();
    }
    flushSeries();
    // The frame buffer is kept for the next capture once callers let go of
    // it: a fresh multi-megabyte image costs more in page faults than drawing.
    if (m_captureBuffer.size() != QSize(width, height) || !m_captureBuffer.isDetached())
        m_captureBuffer = QImage(width, height, QImage::Format_ARGB32_Premultiplied);
    m_captureBuffer.fill(Qt::white);
    {
        QPainter painter(&m_captureBuffer);
        scene()->render(&painter, QRectF(0, 0, width, height), QRectF(0, 0, width, height));
    }
    const QImage image = m_captureBuffer;
    if (resized && previous.isValid() && !previous.isEmpty()) {
        c->resize(previous);
        if (c->layout())
            c->layout()->activate();
        recalculateRange(false);
    }
    return image;
}

bool OrvexChartView::saveImage(const std::string& path, int width, int height)
{
    return captureImage(width, height).save(QString::fromStdString(path));
}

void OrvexChartView::showConfigureDialog()
{
    emit configureRequested();
    auto* dialog = new OrvexCurveConfigureDialog(this, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->exec();
}

bool OrvexChartView::importJson(const QString& path)
{
    QString file = path;
    if (file.isEmpty())
        file = QFileDialog::getOpenFileName(this, QStringLiteral("Import JSON file"), QDir::currentPath(),
                                            QStringLiteral("JSON (*.json)"));
    if (file.isEmpty() || !m_curveManager->importData(file))
        return false;
    updateCurves();
    refreshAllMarkersPosition();
    fitView();
    Python::QtUIPysUtils::importFromFiles(m_variableName, {Python::QtUIPysUtils::pyString(file.toStdString())});
    return true;
}

bool OrvexChartView::exportJson(const QString& path)
{
    QString file = path;
    if (file.isEmpty())
        file = QFileDialog::getSaveFileName(this, QStringLiteral("Export JSON file"), QDir::currentPath(),
                                            QStringLiteral("JSON (*.json)"));
    if (file.isEmpty() || !m_curveManager->exportData(file))
        return false;
    Python::QtUIPysUtils::exportToFile(m_variableName, Python::QtUIPysUtils::pyString(file.toStdString()));
    return true;
}

bool OrvexChartView::exportDataToCommaCSV(std::string path)
{
    return exportCsv(path, CommaSeparated);
}

bool OrvexChartView::exportDataToBlankCSV(std::string path)
{
    return exportCsv(path, BlankSeparated);
}

bool OrvexChartView::importDataFromCommaCSV(std::vector<std::string> files)
{
    return importCsv(files, CommaSeparated);
}

bool OrvexChartView::importDataFromBlankCSV(std::vector<std::string> files)
{
    return importCsv(files, BlankSeparated);
}

bool OrvexChartView::exportCsv(const std::string& path, ExportType type)
{
    const auto flavour =
        type == CommaSeparated ? OrvexCurveCsvFile::Flavour::Comma : OrvexCurveCsvFile::Flavour::Blank;
    if (!OrvexCurveCsvFile::exportData(*m_curveManager, path, flavour, this))
        return false;
    if (!path.empty())
        Python::QtUIPysUtils::exportToFile(m_variableName, Python::QtUIPysUtils::pyString(path));
    return true;
}

bool OrvexChartView::importCsv(const std::vector<std::string>& files, ExportType type)
{
    const auto flavour =
        type == CommaSeparated ? OrvexCurveCsvFile::Flavour::Comma : OrvexCurveCsvFile::Flavour::Blank;
    if (OrvexCurveCsvFile::importData(*m_curveManager, files, flavour, this) <= 0)
        return false;
    updateCurves();
    refreshAllMarkersPosition();
    fitView();
    repaint();
    if (!files.empty()) {
        std::vector<std::string> names;
        for (const auto& file : files)
            names.push_back(Python::QtUIPysUtils::pyString(file));
        Python::QtUIPysUtils::importFromFiles(m_variableName, names);
    }
    return true;
}

QStringList OrvexChartView::legendLabels() const
{
    return m_legendItem ? m_legendItem->labels() : QStringList();
}

void OrvexChartView::dumpViewInformation()
{
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Export file"), QDir::currentPath(),
                                                      QStringLiteral("txt (*.txt)"));
    if (!path.isEmpty())
        dumpViewInformation(path);
}

bool OrvexChartView::dumpViewInformation(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::cerr << "Cannot open file for writing: " << file.errorString().toStdString() << std::endl;
        return false;
    }
    QStringList lines;
    lines << QStringLiteral("title: ") + QString::fromStdString(m_title);
    if (isPolarChart()) {
        const auto ang = getRangeAngular();
        const auto mag = getRangeMagnitude();
        lines << QStringLiteral("chart type: polar chart")
              << QStringLiteral("angular axis label: ") + QString::fromStdString(m_angularLabel)
              << QStringLiteral("angular axis range: [%1, %2]").arg(number(ang.first), number(ang.second))
              << QStringLiteral("angular axis divisions: ") + number(m_angularAxis->tickCount() - 1)
              << QStringLiteral("magnitude axis label: ") + QString::fromStdString(m_magnitudeLabel)
              << QStringLiteral("magnitude axis range: [%1, %2]").arg(number(mag.first), number(mag.second))
              << QStringLiteral("magnitude axis divisions: ") + number(m_magnitudeDivisions)
              << QStringLiteral("magnitude axis auto limits: ") + flag(m_magnitudeAutoLimits)
              << QStringLiteral("magnitude axis normalized: ") + flag(m_magnitudeNormalized);
    } else {
        const auto rx = getRangeX();
        const double stepX = m_useXLog ? m_axisXLog->base() : m_axisX->tickInterval();
        lines << QStringLiteral("chart type: cartesian chart") << QStringLiteral("log scale x: ") + flag(m_useXLog)
              << QStringLiteral("x axis label: ") + QString::fromStdString(m_xLabel)
              << QStringLiteral("x axis range: [%1, %2]").arg(number(rx.first), number(rx.second))
              << QStringLiteral("x axis step: ") + number(stepX)
              << QStringLiteral("x axis auto limits: ") + flag(m_autoLimitsX)
              << QStringLiteral("x axis auto divisions: ") + flag(m_autoDivisionsX)
              << QStringLiteral("y axis label: ") + QString::fromStdString(m_yLabel)
              << QStringLiteral("y axis range: [%1, %2]").arg(number(m_axisY->min()), number(m_axisY->max()))
              << QStringLiteral("y axis step: ") + number(m_axisY->tickInterval())
              << QStringLiteral("y axis auto limits: ") + flag(m_autoLimitsY)
              << QStringLiteral("y axis auto divisions: ") + flag(m_autoDivisionsY);
    }
    QString legend = QStringLiteral("legend markers: [");
    for (const QString& label : legendLabels())
        legend += label + QStringLiteral(", ");
    lines << legend + QStringLiteral("]");
    lines << QStringLiteral("markrs: {");
    if (const auto group = m_markerManager->getCurrentGroup()) {
        for (const auto& marker : group->getAllMarkers()) {
            const QString label = QString::fromStdString(marker->label());
            const auto curve = marker->curve();
            lines << label + QStringLiteral(":(%1, %2)").arg(number(marker->data().x()), number(marker->data().y()));
            lines << label
                    + QStringLiteral(" x unit:(%1), y unit:(%2)")
                          .arg(QString::fromStdString(curve ? curve->xUnit() : std::string()),
                               QString::fromStdString(curve ? curve->yUnit() : std::string()));
        }
    }
    lines << QStringLiteral("}");
    QTextStream out(&file);
    out << lines.join(QLatin1Char('\n'));
    return true;
}

// ---------------------------------------------------------------- menus

void OrvexChartView::addMarkerAt(MarkerType type, const QPointF& scenePos)
{
    m_markerManager->beginAddingMarker(type);
    m_markerManager->addMarker(sceneToValue(scenePos));
    m_markerManager->bindMarker();
    m_markerManager->cleanState();
}

QMenu* OrvexChartView::buildChartMenu(const QPointF& scenePos)
{
    auto* menu = new QMenu(this);
    if (m_enableProperty)
        menu->addAction(QStringLiteral("Configure"), this, &OrvexChartView::showConfigureDialog);
    if (m_enableChangeViewType) {
        QMenu* types = menu->addMenu(QStringLiteral("Change Type to"));
        auto* group = new QActionGroup(types);
        const std::vector<std::pair<QString, ViewType>> entries = {
            {QStringLiteral("Line"), Line}, {QStringLiteral("Bar"), Bar}, {QStringLiteral("Polar"), Polar}};
        for (const auto& [text, type] : entries) {
            if (type == Polar && !m_enablePolarView)
                continue;
            QAction* action = types->addAction(text);
            action->setCheckable(true);
            action->setChecked(m_viewType == type);
            group->addAction(action);
            const ViewType chosen = type;
            connect(action, &QAction::triggered, this, [this, chosen] { changeViewTypeTo(chosen); });
        }
    }
    menu->addAction(QStringLiteral("Fit All"), this, [this] {
        fitView();
        Python::QtUIPysUtils::addCmdContent(m_variableName + ".fit_view()");
    });
    menu->addSeparator();
    menu->addAction(QStringLiteral("Zoom In"), this, [this, scenePos] { slotZoom(kZoomIn, scenePos); });
    menu->addAction(QStringLiteral("Zoom Out"), this, [this, scenePos] { slotZoom(kZoomOut, scenePos); });
    if (!isPolarChart()) {
        QAction* area = menu->addAction(QStringLiteral("Zoom to Area"));
        area->setCheckable(true);
        area->setChecked(m_useRubberBandZoom);
        connect(area, &QAction::toggled, this, &OrvexChartView::setUseRubberBandZoom);
    }
    if (m_enableXLog || m_enableYLog)
        menu->addSeparator();
    if (m_enableXLog) {
        QAction* log = menu->addAction(QStringLiteral("Show X Axis in Log Scale"));
        log->setCheckable(true);
        log->setChecked(m_useXLog);
        connect(log, &QAction::toggled, this, [this](bool on) {
            setUseXLog(on);
            reset();
        });
    }
    if (m_enableYLog) {
        QAction* log = menu->addAction(QStringLiteral("Show Y Axis in Log Scale"));
        log->setCheckable(true);
        log->setChecked(m_useYLog);
        connect(log, &QAction::toggled, this, [this](bool on) {
            setUseYLog(on);
            reset();
        });
    }
    if (m_enableImport)
        menu->addAction(QStringLiteral("Import Data from CSV"), this,
                        [this] { importDataFromCommaCSV(std::vector<std::string>()); });
    if (m_enableExport)
        menu->addAction(QStringLiteral("Export Data to CSV"), this, [this] {
            if (m_exportType == BlankSeparated)
                exportDataToBlankCSV(std::string());
            else
                exportDataToCommaCSV(std::string());
        });
    if (m_enableMarker) {
        menu->addSeparator();
        menu->addAction(QStringLiteral("Add Horizontal Line Marker"), this,
                        [this, scenePos] { addMarkerAt(MarkerType::HorizontalLineMarker, scenePos); });
        menu->addAction(QStringLiteral("Add Vertical Line Marker"), this,
                        [this, scenePos] { addMarkerAt(MarkerType::VerticalLineMarker, scenePos); });
        menu->addAction(QStringLiteral("Add Point Marker"), this,
                        [this, scenePos] { addMarkerAt(MarkerType::PointMarker, scenePos); });
    }
    if (qEnvironmentVariableIsSet("MCAD_POST_PROCESS_DEBUG")) {
        menu->addSeparator();
        menu->addAction(QStringLiteral("_dump_information_for_test"), this,
                        qOverload<>(&OrvexChartView::dumpViewInformation));
        menu->addAction(QStringLiteral("_test_add_curves"), this, &OrvexChartView::addTestCurves);
        menu->addAction(QStringLiteral("_test_set_plot_area"), this, &OrvexChartView::setTestPlotArea);
    }
    return menu;
}

QMenu* OrvexChartView::buildMarkerMenu()
{
    const auto marker = m_markerManager->getHoveredMarker();
    auto* menu = new QMenu(this);
    if (!marker)
        return menu;
    const bool polar = isPolarChart();
    const auto curve = marker->curve();
    const MarkerType type = marker->type();
    auto moveTo = [this, marker](QPointF target) {
        m_markerManager->moveMarker(marker, target);
        Python::QtUIPysUtils::setMarkerProperty(
            m_variableName, Python::QtUIPysUtils::pyString(marker->label()), "'position'",
            "[" + std::to_string(target.x()) + "," + std::to_string(target.y()) + "]");
    };
    if (curve && (type == MarkerType::PointMarker || type == MarkerType::VerticalLineMarker)) {
        menu->addAction(polar ? QStringLiteral("Move to Angular Min") : QStringLiteral("Move to X Min"), this,
                        [moveTo, curve] { moveTo(curve->minimumXPoint()); });
        menu->addAction(polar ? QStringLiteral("Move to Angular Max") : QStringLiteral("Move to X Max"), this,
                        [moveTo, curve] { moveTo(curve->maximumXPoint()); });
    }
    if (curve && (type == MarkerType::PointMarker || type == MarkerType::HorizontalLineMarker)) {
        menu->addAction(polar ? QStringLiteral("Move to Magnitude Min") : QStringLiteral("Move to Y Min"), this,
                        [moveTo, curve] { moveTo(curve->minimumYPoint()); });
        menu->addAction(polar ? QStringLiteral("Move to Magnitude Max") : QStringLiteral("Move to Y Max"), this,
                        [moveTo, curve] { moveTo(curve->maximumYPoint()); });
    }
    if (m_enableProperty)
        menu->addAction(QStringLiteral("Configure"), this, &OrvexChartView::showConfigureDialog);
    if (marker->attached()) {
        menu->addAction(QStringLiteral("Detach"), this, [this, marker] {
            marker->detach();
            Python::QtUIPysUtils::setMarkerProperty(m_variableName, Python::QtUIPysUtils::pyString(marker->label()),
                                                    "'attached'", "False");
        });
    } else {
        menu->addAction(QStringLiteral("Attach"), this, [this, marker] {
            if (m_markerManager->bindMarker(marker))
                Python::QtUIPysUtils::setMarkerProperty(
                    m_variableName, Python::QtUIPysUtils::pyString(marker->label()), "'attached'", "True");
        });
    }
    menu->addAction(QStringLiteral("Delete"), this, [this, marker] { m_markerManager->deleteMarker(marker->id()); });
    return menu;
}

void OrvexChartView::popupRightMenu(QMouseEvent* event)
{
    const QPointF scenePos = QGraphicsView::mapToScene(event->pos());
    QMenu* menu = m_markerManager->findClosestMarker(scenePos) ? buildMarkerMenu() : buildChartMenu(scenePos);
    menu->exec(event->globalPos());
    delete menu;
}

void OrvexChartView::addTestCurves()
{
    std::vector<double> x;
    std::vector<double> s;
    std::vector<double> c;
    for (int i = 0; i <= 360; ++i) {
        x.push_back(i);
        s.push_back(std::sin(i * M_PI / 180) + 1.5);
        c.push_back(std::cos(i * M_PI / 180) + 1.5);
    }
    auto sine = m_curveManager->createCurve(x, s, std::string());
    sine->setTitle("test sine");
    emit sine->dataChanged();
    auto cosine = m_curveManager->createCurve(x, c, std::string());
    cosine->setTitle("test cosine");
    emit cosine->dataChanged();
    updateCurves();
    fitView();
}

void OrvexChartView::setTestPlotArea()
{
    if (chart())
        chart()->setPlotArea(QRectF(80, 40, 400, 300));
}

// ---------------------------------------------------------------- events

bool OrvexChartView::canInteract(QPoint pos) const
{
    const QPointF scenePos = QGraphicsView::mapToScene(pos);
    if (m_markerManager->state() == MarkerState::Dragging)
        return false;
    if (isPolarChart()) {
        const QRectF area = plotArea();
        return QLineF(area.center(), scenePos).length() <= std::min(area.width(), area.height()) / 2 + 1;
    }
    return plotArea().contains(scenePos);
}

int OrvexChartView::detectAxisLabelClick(const QPointF& scenePos) const
{
    if (isPolarChart() || !chart())
        return 0;
    const QRectF area = plotArea();
    const QRectF chartRect = chart()->geometry();
    const QRectF below(area.left(), area.bottom() + 1, area.width(), chartRect.bottom() - area.bottom());
    const QRectF left(chartRect.left(), area.top(), area.left() - chartRect.left() - 1, area.height());
    // Titles sit on the outer half of the margins, past the tick labels.
    if (below.contains(scenePos) && scenePos.y() > below.center().y())
        return 1;
    if (left.contains(scenePos) && scenePos.x() < left.center().x())
        return 2;
    return 0;
}

void OrvexChartView::handleLegendHovered(const QPointF& scenePos, bool hovered)
{
    if (!m_legendItem || !m_legendTipItem)
        return;
    const int entry = hovered ? m_legendItem->entryAt(scenePos) : -1;
    if (entry < 0 || !m_legendInteractive) {
        m_legendTipItem->hideTip();
        return;
    }
    const QString hint = m_legendManipulator ? m_legendManipulator->tipText() : QString();
    m_legendTipItem->showTip(m_legendItem->labels().value(entry) + QLatin1Char('\n') + hint, scenePos);
}

void OrvexChartView::setCursorStyle()
{
    if (m_markerManager->state() != MarkerState::Idle || m_markerManager->getHoveredMarker()) {
        m_markerManager->setCursorStyle();
        return;
    }
    if (m_panning)
        viewport()->setCursor(Qt::ClosedHandCursor);
    else if (m_useRubberBandZoom)
        viewport()->setCursor(Qt::CrossCursor);
    else
        viewport()->unsetCursor();
}

void OrvexChartView::mousePressEvent(QMouseEvent* event)
{
    const QPointF scenePos = QGraphicsView::mapToScene(event->pos());
    if (event->button() == Qt::RightButton) {
        popupRightMenu(event);
        event->accept();
        return;
    }
    if (event->button() != Qt::LeftButton) {
        QChartView::mousePressEvent(event);
        return;
    }
    if (m_legendManipulator && m_legendInteractive && m_legendManipulator->handlePress(scenePos)) {
        event->accept();
        return;
    }
    if (m_markerManager->handleMousePressEvent(scenePos)) {
        event->accept();
        return;
    }
    if (canInteract(event->pos())) {
        if (m_useRubberBandZoom && !isPolarChart()) {
            m_rubberBandActive = true;
            m_rubberBandOrigin = event->pos();
            m_rubberBand->setGeometry(QRect(m_rubberBandOrigin, QSize()));
            m_rubberBand->show();
        } else if (!isPolarChart()) {
            m_panning = true;
            m_panLast = event->pos();
        }
    }
    setCursorStyle();
    event->accept();
}

void OrvexChartView::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF scenePos = QGraphicsView::mapToScene(event->pos());
    if (m_legendManipulator && m_legendManipulator->handleMove(scenePos)) {
        event->accept();
        return;
    }
    if (m_markerManager->handleMouseMoveEvent(scenePos)) {
        event->accept();
        return;
    }
    if (m_rubberBandActive) {
        m_rubberBand->setGeometry(QRect(m_rubberBandOrigin, event->pos()).normalized());
    } else if (m_panning) {
        const QPointF from = sceneToValue(QGraphicsView::mapToScene(m_panLast));
        const QPointF to = sceneToValue(scenePos);
        m_panLast = event->pos();
        auto shift = [](std::pair<double, double> r, double a, double b, bool log) {
            if (log) {
                const double k = b / a;
                return std::make_pair(r.first / k, r.second / k);
            }
            return std::make_pair(r.first - (b - a), r.second - (b - a));
        };
        m_rangeX = shift(getRangeX(), from.x(), to.x(), m_useXLog);
        m_rangeY = shift(getRangeY(), from.y(), to.y(), m_useYLog);
        if (isRangeValid(m_rangeX) && isRangeValid(m_rangeY)) {
            if (m_useXLog)
                m_axisXLog->setRange(m_rangeX.first, m_rangeX.second);
            else
                m_axisX->setRange(m_rangeX.first, m_rangeX.second);
            if (m_useYLog)
                m_axisYLog->setRange(m_rangeY.first, m_rangeY.second);
            else
                m_axisY->setRange(m_rangeY.first, m_rangeY.second);
            recalculateRange(true);
        }
    } else {
        if (m_useAutoTip && canInteract(event->pos()))
            moveProbeTo(scenePos);
        handleLegendHovered(scenePos, true);
    }
    setCursorStyle();
    event->accept();
}

void OrvexChartView::mouseReleaseEvent(QMouseEvent* event)
{
    const QPointF scenePos = QGraphicsView::mapToScene(event->pos());
    if (m_legendManipulator && m_legendManipulator->handleRelease(scenePos)) {
        event->accept();
        return;
    }
    if (m_markerManager->handleMouseReleaseEvent(scenePos)) {
        event->accept();
        return;
    }
    if (m_rubberBandActive) {
        m_rubberBandActive = false;
        m_rubberBand->hide();
        const QRect band = QRect(m_rubberBandOrigin, event->pos()).normalized();
        if (band.width() > 2 && band.height() > 2) {
            const QPointF a = sceneToValue(QGraphicsView::mapToScene(band.bottomLeft()));
            const QPointF b = sceneToValue(QGraphicsView::mapToScene(band.topRight()));
            const double factor = plotArea().width() / band.width();
            m_rangeX = {std::min(a.x(), b.x()), std::max(a.x(), b.x())};
            m_rangeY = {std::min(a.y(), b.y()), std::max(a.y(), b.y())};
            m_zoomFactor *= factor;
            recalculateRange(false);
        }
    }
    m_panning = false;
    setCursorStyle();
    event->accept();
}

void OrvexChartView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QPointF scenePos = QGraphicsView::mapToScene(event->pos());
    if (event->button() == Qt::LeftButton && m_legendManipulator && m_legendInteractive
        && m_legendManipulator->handleDoubleClick(scenePos)) {
        event->accept();
        return;
    }
    if (event->button() == Qt::LeftButton && m_axisLabelEdit) {
        if (const int axis = detectAxisLabelClick(scenePos)) {
            m_axisLabelEdit->editAxis(axis == 1 ? Qt::Horizontal : Qt::Vertical);
            event->accept();
            return;
        }
    }
    QChartView::mouseDoubleClickEvent(event);
}

void OrvexChartView::wheelEvent(QWheelEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (!canInteract(pos)) {
        event->ignore();
        return;
    }
    const QPointF scenePos = QGraphicsView::mapToScene(pos);
    slotZoom(event->angleDelta().y() > 0 ? kZoomIn : kZoomOut, scenePos);
    if (m_probeItem && m_probeItem->hasProbe())
        moveProbeTo(scenePos);
    event->accept();
}

void OrvexChartView::resizeEvent(QResizeEvent* event)
{
    QChartView::resizeEvent(event);
    recalculateRange(false);
    scheduleSeriesUpdate();
}

void OrvexChartView::paintEvent(QPaintEvent* event)
{
    flushSeries();
    QChartView::paintEvent(event);
}

void OrvexChartView::focusInEvent(QFocusEvent* event)
{
    QChartView::focusInEvent(event);
    emit focusIn();
}

bool OrvexChartView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == viewport() && event->type() == QEvent::Leave) {
        hideProbe();
        if (m_legendTipItem)
            m_legendTipItem->hideTip();
    }
    return QChartView::eventFilter(watched, event);
}

} // namespace Gui::Widget
