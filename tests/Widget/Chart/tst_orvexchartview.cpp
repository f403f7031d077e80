#include "ChartTestHelpers.h"

#include "ModalCatcher.h"

#include "Widget/Chart/ChartMarkerGroup.h"
#include "Widget/Chart/Marker.h"
#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/OrvexCurveGroup.h"

#include <QTemporaryDir>
#include <QWheelEvent>
#include <QtCharts/QLineSeries>
#include <QtCharts/QLogValueAxis>
#include <QtCharts/QValueAxis>

#include <cmath>

using namespace Gui::Widget;
using namespace ChartTest;

namespace {

// Opens the protected range helpers to the tests.
class RangeProbe : public OrvexChartView
{
public:
    using OrvexChartView::createTickLabels;
    using OrvexChartView::isRangeValid;
};

QString readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

void sendWheel(OrvexChartView* view, const QPoint& pos, int delta)
{
    QWheelEvent event(QPointF(pos), QPointF(view->viewport()->mapToGlobal(pos)), QPoint(), QPoint(0, delta),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view->viewport(), &event);
}

const QStringList kChartMenu = {
    "Configure", "Change Type to", "Change Type to/Line", "Change Type to/Bar", "Change Type to/Polar", "Fit All",
    "Zoom In", "Zoom Out", "Zoom to Area", "Show X Axis in Log Scale", "Show Y Axis in Log Scale",
    "Import Data from CSV", "Export Data to CSV", "Add Horizontal Line Marker", "Add Vertical Line Marker",
    "Add Point Marker"};
const QStringList kDebugEntries = {"_dump_information_for_test", "_test_add_curves", "_test_set_plot_area"};

} // namespace

class TestOrvexChartView : public QObject
{
    Q_OBJECT

private slots:
    void niceStep_data();
    void niceStep();
    void rangeValidity_data();
    void rangeValidity();
    void fitRanges_data();
    void fitRanges();
    void rangeEdgeCases();
    void wheelZoom_data();
    void wheelZoom();
    void chartMenu_data();
    void chartMenu();
    void chartMenuEntriesAct_data();
    void chartMenuEntriesAct();
    void dumpCartesian();
    void dumpPolar();
    void viewTypeSwitch_data();
    void viewTypeSwitch();
    void recordedStatements();
    void variableNamesUnique();
    void tickLabels_data();
    void tickLabels();
};

void TestOrvexChartView::niceStep_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("spacing");
    QTest::addColumn<int>("maxCount");
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("lo");
    QTest::addColumn<double>("hi");

    QTest::newRow("angles 0..360 on 400 px") << 0.0 << 360.0 << 400.0 << 50.0 << 25 << 8 << 60.0 << 0.0 << 360.0;
    QTest::newRow("unit range on 500 px") << 0.0 << 1.0 << 500.0 << 50.0 << 25 << 10 << 0.1 << 0.0 << 1.0;
    QTest::newRow("24 px forces one interval") << 0.0 << 10.0 << 24.0 << 50.0 << 25 << 1 << 10.0 << 0.0 << 10.0;
    QTest::newRow("tick cap") << 0.0 << 100.0 << 2000.0 << 50.0 << 25 << 25 << 5.0 << 0.0 << 100.0;
    QTest::newRow("bias lifts 7.9962 to 8") << 0.0 << 8.0 << 399.81 << 50.0 << 25 << 8 << 1.0 << 0.0 << 8.0;
    QTest::newRow("bias keeps 7.996 at 7") << 0.0 << 7.0 << 399.8 << 50.0 << 25 << 7 << 1.0 << 0.0 << 7.0;
    QTest::newRow("720 uses the angle sequence") << 0.0 << 720.0 << 400.0 << 50.0 << 25 << 8 << 90.0 << 0.0 << 720.0;
    QTest::newRow("700 uses the ordinary one") << 0.0 << 700.0 << 400.0 << 50.0 << 25 << 8 << 100.0 << 0.0 << 700.0;
    QTest::newRow("limits widen to whole steps") << 0.3 << 9.7 << 400.0 << 50.0 << 25 << 8 << 2.0 << 0.0 << 10.0;
    QTest::newRow("Y spacing") << -1.0 << 1.0 << 350.0 << 35.0 << 20 << 10 << 0.2 << -1.0 << 1.0;
}

void TestOrvexChartView::niceStep()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, length);
    QFETCH(double, spacing);
    QFETCH(int, maxCount);
    const auto layout = OrvexChartView::calculateNiceStep(min, max, length, spacing, maxCount);
    QTEST(layout.count, "count");
    QFETCH(double, step);
    QFETCH(double, lo);
    QFETCH(double, hi);
    QVERIFY2(std::fabs(layout.step - step) < 1e-12, qPrintable(QString::number(layout.step)));
    QVERIFY2(std::fabs(layout.min - lo) < 1e-9, qPrintable(QString::number(layout.min)));
    QVERIFY2(std::fabs(layout.max - hi) < 1e-9, qPrintable(QString::number(layout.max)));
}

void TestOrvexChartView::rangeValidity_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<bool>("valid");
    QTest::newRow("ordinary") << 0.0 << 1.0 << true;
    QTest::newRow("nan") << std::nan("") << 1.0 << false;
    QTest::newRow("infinite") << 0.0 << HUGE_VAL << false;
    QTest::newRow("beyond clamp") << -1e41 << 0.0 << false;
    QTest::newRow("empty data marker") << std::numeric_limits<double>::max() << std::numeric_limits<double>::lowest()
                                       << false;
}

void TestOrvexChartView::rangeValidity()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QTEST(RangeProbe::isRangeValid({min, max}), "valid");
}

void TestOrvexChartView::fitRanges_data()
{
    QTest::addColumn<QVector<double>>("x");
    QTest::addColumn<QVector<double>>("y");
    QTest::addColumn<bool>("autoLimits");
    QTest::addColumn<QPointF>("rangeX");
    QTest::addColumn<QPointF>("rangeY");
    QTest::newRow("no curves") << QVector<double>() << QVector<double>() << true << QPointF(0, 100) << QPointF(0, 100);
    QTest::newRow("single point") << QVector<double>{5} << QVector<double>{5} << false << QPointF(4.75, 5.25)
                                  << QPointF(4.75, 5.25);
    QTest::newRow("all zero") << QVector<double>{0, 0} << QVector<double>{0, 0} << false << QPointF(-1e-9, 1e-9)
                              << QPointF(-1e-9, 1e-9);
    QTest::newRow("negative point") << QVector<double>{-5} << QVector<double>{-5} << false << QPointF(-5.25, -4.75)
                                    << QPointF(-5.25, -4.75);
    QTest::newRow("rounded to ticks") << QVector<double>{0.3, 9.7} << QVector<double>{-0.9, 0.95} << true
                                      << QPointF(0, 10) << QPointF(-1, 1);
}

void TestOrvexChartView::fitRanges()
{
    QFETCH(QVector<double>, x);
    QFETCH(QVector<double>, y);
    QFETCH(bool, autoLimits);
    auto view = makeView(800, 600);
    view->setAutoLimitsX(autoLimits);
    view->setAutoLimitsY(autoLimits);
    QSignalSpy fitted(view.get(), &OrvexChartView::fitCompleted);
    if (!x.isEmpty())
        addCurve(view.get(), std::vector<double>(x.begin(), x.end()), std::vector<double>(y.begin(), y.end()));
    view->fitView();
    QVERIFY(!fitted.isEmpty());
    QCOMPARE(view->zoomFactor(), 1.0);
    QFETCH(QPointF, rangeX);
    QFETCH(QPointF, rangeY);
    const auto rx = view->getRangeX();
    const auto ry = view->getRangeY();
    QVERIFY2(std::fabs(rx.first - rangeX.x()) < 1e-12 && std::fabs(rx.second - rangeX.y()) < 1e-12,
             qPrintable(QString("%1 %2").arg(rx.first).arg(rx.second)));
    QVERIFY2(std::fabs(ry.first - rangeY.x()) < 1e-12 && std::fabs(ry.second - rangeY.y()) < 1e-12,
             qPrintable(QString("%1 %2").arg(ry.first).arg(ry.second)));
}

void TestOrvexChartView::rangeEdgeCases()
{
    auto view = makeView();
    // A log axis clamps a non-positive minimum.
    view->setUseYLog(true);
    view->setRangeY(-3, 10);
    QVERIFY(view->axisYLog());
    QCOMPARE(view->axisYLog()->min(), 1e-40);
    QCOMPARE(view->axisYLog()->max(), 10.0);
    QVERIFY(view->chart()->axes(Qt::Vertical).contains(view->axisYLog()));
    QVERIFY(!view->chart()->axes(Qt::Vertical).contains(view->axisY()));
    // An invalid range leaves the axis as it was.
    view->setRangeX(0, 50);
    const auto before = view->getRangeX();
    view->setRangeX(0, std::nan(""));
    QCOMPARE(view->getRangeX(), before);
    view->setRangeX(0, 1e45);
    QCOMPARE(view->getRangeX(), before);
}

void TestOrvexChartView::wheelZoom_data()
{
    QTest::addColumn<int>("delta");
    QTest::addColumn<double>("factor");
    QTest::newRow("up zooms in") << 120 << 1.2;
    QTest::newRow("zero zooms out") << 0 << 0.8333333333333334;
    QTest::newRow("down zooms out") << -120 << 0.8333333333333334;
}

void TestOrvexChartView::wheelZoom()
{
    QFETCH(int, delta);
    QFETCH(double, factor);
    auto view = makeView();
    addCurve(view.get(), {0, 100}, {0, 50});
    const auto before = view->getRangeX();
    // The wheel arrives at a whole pixel.
    const QPointF centre = view->mapToScene(viewPos(view.get(), view->plotArea().center()));
    const QPointF underCursor = view->sceneToValue(centre);
    const double fraction = (underCursor.x() - before.first) / (before.second - before.first);
    sendWheel(view.get(), viewPos(view.get(), centre), delta);
    settle(view.get());
    QCOMPARE(view->zoomFactor(), factor);
    const auto after = view->getRangeX();
    const double ratio = (before.second - before.first) / (after.second - after.first);
    QVERIFY2(std::fabs(ratio - factor) < 1e-9, qPrintable(QString::number(ratio)));
    // The value under the cursor keeps its place along the axis.
    QVERIFY(std::fabs((underCursor.x() - after.first) / (after.second - after.first) - fraction) < 1e-9);

    // Outside the plot area the wheel does nothing.
    sendWheel(view.get(), QPoint(2, 2), 120);
    QCOMPARE(view->zoomFactor(), factor);
}

void TestOrvexChartView::chartMenu_data()
{
    QTest::addColumn<bool>("debug");
    QTest::addColumn<bool>("polar");
    QTest::addColumn<bool>("markerAction");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("plain") << false << false << true << kChartMenu;
    QTest::newRow("debug") << true << false << true << kChartMenu + kDebugEntries;
    QStringList polar = kChartMenu;
    polar.removeAll("Zoom to Area");
    QTest::newRow("polar") << false << true << true << polar;
    QStringList noMarkers = kChartMenu.mid(0, kChartMenu.indexOf("Add Horizontal Line Marker"));
    QTest::newRow("markers off") << true << false << false << noMarkers + kDebugEntries;
}

void TestOrvexChartView::chartMenu()
{
    QFETCH(bool, debug);
    QFETCH(bool, polar);
    QFETCH(bool, markerAction);
    QFETCH(QStringList, expected);
    if (debug)
        qputenv("MCAD_POST_PROCESS_DEBUG", "1");
    else
        qunsetenv("MCAD_POST_PROCESS_DEBUG");
    auto view = makeView();
    view->enableMarkerAction(markerAction);
    if (polar)
        view->changeViewTypeTo(OrvexChartView::Polar);
    settle(view.get());
    MenuInspector inspector;
    rightClick(view.get(), view->plotArea().center());
    QVERIFY(inspector.seen);
    QCOMPARE(inspector.entries, expected);
    qunsetenv("MCAD_POST_PROCESS_DEBUG");
}

void TestOrvexChartView::chartMenuEntriesAct_data()
{
    QTest::addColumn<QString>("entry");
    QTest::newRow("bar type") << "Change Type to/Bar";
    QTest::newRow("polar type") << "Change Type to/Polar";
    QTest::newRow("zoom in") << "Zoom In";
    QTest::newRow("zoom out") << "Zoom Out";
    QTest::newRow("zoom to area") << "Zoom to Area";
    QTest::newRow("x log") << "Show X Axis in Log Scale";
    QTest::newRow("y log") << "Show Y Axis in Log Scale";
    QTest::newRow("horizontal marker") << "Add Horizontal Line Marker";
    QTest::newRow("vertical marker") << "Add Vertical Line Marker";
    QTest::newRow("point marker") << "Add Point Marker";
    QTest::newRow("configure") << "Configure";
    QTest::newRow("test curves") << "_test_add_curves";
    QTest::newRow("test plot area") << "_test_set_plot_area";
}

void TestOrvexChartView::chartMenuEntriesAct()
{
    QFETCH(QString, entry);
    qputenv("MCAD_POST_PROCESS_DEBUG", "1");
    auto view = makeView();
    addCurve(view.get(), {1, 2, 3, 4}, {1, 4, 9, 16});
    QSignalSpy configure(view.get(), &OrvexChartView::configureRequested);
    const QPointF at = view->mapToScene(viewPos(view.get(), view->plotArea().center() + QPointF(-40, 30)));
    const QPointF valueAt = view->sceneToValue(at);
    // "Configure" opens the modal configuration dialog; close it.
    ModalCatcher dialog(ModalCatcher::Action(), entry == "Configure" ? 10000 : 0);
    MenuInspector inspector(entry);
    rightClick(view.get(), at);
    settle(view.get());
    qunsetenv("MCAD_POST_PROCESS_DEBUG");
    QVERIFY(inspector.entries.contains(entry));
    const auto markers = view->getMarkerManager()->allMarkers();
    if (entry == "Change Type to/Bar")
        QCOMPARE(view->getViewType(), OrvexChartView::Bar);
    else if (entry == "Change Type to/Polar")
        QVERIFY(view->isPolarChart());
    else if (entry == "Zoom In")
        QCOMPARE(view->zoomFactor(), 1.2);
    else if (entry == "Zoom Out")
        QCOMPARE(view->zoomFactor(), 0.8333333333333334);
    else if (entry == "Zoom to Area")
        QVERIFY(view->useRubberBandZoom());
    else if (entry == "Show X Axis in Log Scale")
        QVERIFY(view->useXLog() && view->chart()->axes(Qt::Horizontal).contains(view->axisXLog()));
    else if (entry == "Show Y Axis in Log Scale")
        QVERIFY(view->useYLog() && view->chart()->axes(Qt::Vertical).contains(view->axisYLog()));
    else if (entry == "Configure")
        QVERIFY(configure.count() == 1 && dialog.caught());
    else if (entry == "_test_add_curves")
        QCOMPARE(view->legendLabels().size(), 3);
    else if (entry == "_test_set_plot_area")
        QCOMPARE(view->plotArea(), QRectF(80, 40, 400, 300));
    else {
        QCOMPARE(markers.size(), std::size_t(1));
        const MarkerType type = entry.contains("Horizontal") ? MarkerType::HorizontalLineMarker
            : entry.contains("Vertical")                      ? MarkerType::VerticalLineMarker
                                                              : MarkerType::PointMarker;
        QCOMPARE(markers.front()->type(), type);
        if (type != MarkerType::PointMarker)
            QVERIFY2(std::fabs(markers.front()->data().y() - valueAt.y()) < 1e-6,
                     qPrintable(QString("%1 %2").arg(markers.front()->data().y()).arg(valueAt.y())));
        if (type == MarkerType::VerticalLineMarker)
            QVERIFY(std::fabs(markers.front()->data().x() - valueAt.x()) < 1e-6);
    }
}

void TestOrvexChartView::dumpCartesian()
{
    auto view = makeView(800, 600);
    view->setTitle("Gain");
    view->setXLabel("Frequency");
    view->setYLabel("dB");
    auto curve = addCurve(view.get(), {0, 10}, {0, 1}, "S11");
    curve->setXUnit("GHz");
    curve->setYUnit("dB");
    auto marker = view->getMarkerManager()->createMarker(QPointF(2.5, 0.25), MarkerType::PointMarker, "m");
    marker->attach(curve->id());
    QTemporaryDir dir;
    const QString path = dir.filePath("dump.txt");
    QVERIFY(view->dumpViewInformation(path));
    const auto rx = view->getRangeX();
    const auto ry = view->getRangeY();
    const QString label = QString::fromStdString(marker->label());
    const QString expected =
        QStringList{"title: Gain", "chart type: cartesian chart", "log scale x: 0", "x axis label: Frequency",
                    QString("x axis range: [%1, %2]").arg(rx.first).arg(rx.second),
                    QString("x axis step: %1").arg(view->axisX()->tickInterval()), "x axis auto limits: 1",
                    "x axis auto divisions: 1", "y axis label: dB",
                    QString("y axis range: [%1, %2]").arg(ry.first).arg(ry.second),
                    QString("y axis step: %1").arg(view->axisY()->tickInterval()), "y axis auto limits: 1",
                    "y axis auto divisions: 1", "legend markers: [S11, ]", "markrs: {", label + ":(2.5, 0.25)",
                    label + " x unit:(GHz), y unit:(dB)", "}"}
            .join('\n');
    QCOMPARE(readFile(path), expected);
    QVERIFY(!view->dumpViewInformation(dir.filePath("missing/dir/dump.txt")));
}

void TestOrvexChartView::dumpPolar()
{
    auto view = makeView(600, 600);
    view->changeViewTypeTo(OrvexChartView::Polar);
    view->setAngularLabel("Phi");
    view->setMagnitudeLabel("Gain");
    view->setAngularDivisions(12);
    addCurve(view.get(), {0, 90, 180, 270}, {1, 2, 3, 4}, "pattern");
    QTemporaryDir dir;
    const QString path = dir.filePath("polar.txt");
    QVERIFY(view->dumpViewInformation(path));
    const QStringList lines = readFile(path).split('\n');
    const auto mag = view->getRangeMagnitude();
    QCOMPARE(lines.mid(0, 10),
             (QStringList{"title: ", "chart type: polar chart", "angular axis label: Phi",
                          "angular axis range: [0, 360]", "angular axis divisions: 12", "magnitude axis label: Gain",
                          QString("magnitude axis range: [%1, %2]").arg(mag.first).arg(mag.second),
                          "magnitude axis divisions: 5", "magnitude axis auto limits: 1",
                          "magnitude axis normalized: 0"}));
    QCOMPARE(lines.mid(10), (QStringList{"legend markers: [pattern, ]", "markrs: {", "}"}));
}

void TestOrvexChartView::viewTypeSwitch_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("bar") << int(OrvexChartView::Bar);
    QTest::newRow("polar") << int(OrvexChartView::Polar);
}

void TestOrvexChartView::viewTypeSwitch()
{
    QFETCH(int, type);
    auto view = makeView();
    auto curve = addCurve(view.get(), {0, 90, 180}, {1, 2, 3});
    auto marker = view->getMarkerManager()->createMarker(QPointF(90, 2), MarkerType::PointMarker, "");
    marker->attach(curve->id());
    QVERIFY(view->changeViewTypeTo(OrvexChartView::ViewType(type)));
    QVERIFY(!view->changeViewTypeTo(OrvexChartView::ViewType(type)));
    settle(view.get());
    QCOMPARE(int(view->getViewType()), type);
    QCOMPARE(view->isPolarChart(), type == OrvexChartView::Polar);
    QVERIFY(view->seriesOf(curve->id()));
    // Bars replace the line; the polar chart draws the line on its own axes.
    QCOMPARE(view->seriesOf(curve->id())->isVisible(), type == OrvexChartView::Polar);
    QCOMPARE(view->axisX() == nullptr, type == OrvexChartView::Polar);
    QCOMPARE(view->angularAxis() != nullptr, type == OrvexChartView::Polar);
    // The marker stays on its data point, now at the new scene position.
    QCOMPARE(marker->data(), QPointF(90, 2));
    QCOMPARE(marker->position(), view->valueToScene(QPointF(90, 2)));
    QVERIFY(view->changeViewTypeTo(OrvexChartView::Line));
    settle(view.get());
    QVERIFY(view->seriesOf(curve->id())->isVisible());
    QVERIFY(view->axisX());
}

void TestOrvexChartView::recordedStatements()
{
    RecordingHost host;
    auto view = makeView();
    const QString chart = QString::fromStdString(view->variableName());
    host.statements.clear();
    view->setTitle("It's");
    view->changeViewTypeTo(OrvexChartView::Bar);
    view->reset();
    QTemporaryDir dir;
    addCurve(view.get(), {1, 2}, {3, 4});
    QVERIFY(view->exportJson(dir.filePath("c.json")));
    QVERIFY(view->importJson(dir.filePath("c.json")));
    QCOMPARE(host.statements,
             (QStringList{chart + ".set_properties({'title' : 'It\\'s'})",
                          chart + ".set_properties({'plot_type' : pelo3dqtui.PlotType.RectangleBar})",
                          chart + ".reset()", chart + ".export_to('" + dir.filePath("c.json") + "')",
                          chart + ".import_from(['" + dir.filePath("c.json") + "'])"}));
}

void TestOrvexChartView::variableNamesUnique()
{
    auto a = makeView(200, 200);
    auto b = makeView(200, 200);
    QVERIFY(QString::fromStdString(a->variableName()).startsWith("Chart_"));
    QVERIFY(a->variableName() != b->variableName());
    QVERIFY(a->id() != b->id());
}

void TestOrvexChartView::tickLabels_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("decimals from step") << 0.0 << 0.3 << 0.1 << QString() << QStringList{"0.0", "0.1", "0.2", "0.3"};
    QTest::newRow("whole steps") << 0.0 << 20.0 << 10.0 << QString() << QStringList{"0", "10", "20"};
    QTest::newRow("user integer format") << 0.0 << 2.0 << 1.0 << "%03d" << QStringList{"000", "001", "002"};
    QTest::newRow("user float format") << 0.0 << 1.0 << 0.5 << "%.2e" << QStringList{"0.00e+00", "5.00e-01", "1.00e+00"};
    QTest::newRow("bad format falls back") << 0.0 << 1.0 << 1.0 << "abc" << QStringList{"0", "1"};
}

void TestOrvexChartView::tickLabels()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, step);
    QFETCH(QString, format);
    const auto labels = RangeProbe::createTickLabels(min, max, int(std::lround((max - min) / step)), step, format);
    QStringList texts;
    for (const auto& [value, text] : labels)
        texts << QString::fromStdString(text);
    QTEST(texts, "labels");
}

QTEST_MAIN(TestOrvexChartView)
#include "tst_orvexchartview.moc"
