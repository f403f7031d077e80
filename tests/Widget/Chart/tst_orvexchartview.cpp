#include "ChartTestHelpers.h"

#include "ModalCatcher.h"

#include "Widget/Chart/Marker.h"
#include "Widget/Chart/OrvexChartMarkerManager.h"

#include <QTemporaryDir>
#include <QWheelEvent>
#include <QtCharts/QLogValueAxis>
#include <QtCharts/QValueAxis>

#include <cmath>

using namespace Gui::Widget;
using namespace ChartTest;

using ViewCheck = std::function<bool(OrvexChartView&, const QPointF& valueAtClick)>;
Q_DECLARE_METATYPE(ViewCheck)

namespace {

// Opens the protected tick label helper to the tests.
class RangeProbe : public OrvexChartView
{
public:
    using OrvexChartView::createTickLabels;
};

bool near(double actual, double expected, double tolerance = 1e-9)
{
    return std::fabs(actual - expected) < tolerance;
}

QString readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
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
    void fitRanges_data();
    void fitRanges();
    void rangeEdgeCases();
    void wheelZoom_data();
    void wheelZoom();
    void chartMenu_data();
    void chartMenu();
    void dumpCartesian();
    void dumpPolar();
    void recordedStatements();
    void tickLabels_data();
    void tickLabels();
};

void TestOrvexChartView::niceStep_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("length"); // pixels, at 50 px per tick and at most 25 ticks
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("lo");
    QTest::addColumn<double>("hi");
    QTest::newRow("angles 0..360 on 400 px") << 0.0 << 360.0 << 400.0 << 8 << 60.0 << 0.0 << 360.0;
    QTest::newRow("unit range on 500 px") << 0.0 << 1.0 << 500.0 << 10 << 0.1 << 0.0 << 1.0;
    QTest::newRow("24 px forces one interval") << 0.0 << 10.0 << 24.0 << 1 << 10.0 << 0.0 << 10.0;
    QTest::newRow("tick cap") << 0.0 << 100.0 << 2000.0 << 25 << 5.0 << 0.0 << 100.0;
    QTest::newRow("bias lifts 7.9962 to 8") << 0.0 << 8.0 << 399.81 << 8 << 1.0 << 0.0 << 8.0;
    QTest::newRow("bias keeps 7.996 at 7") << 0.0 << 7.0 << 399.8 << 7 << 1.0 << 0.0 << 7.0;
    QTest::newRow("720 uses the angle sequence") << 0.0 << 720.0 << 400.0 << 8 << 90.0 << 0.0 << 720.0;
    QTest::newRow("700 uses the ordinary one") << 0.0 << 700.0 << 400.0 << 8 << 100.0 << 0.0 << 700.0;
    QTest::newRow("limits widen to whole steps") << 0.3 << 9.7 << 400.0 << 8 << 2.0 << 0.0 << 10.0;
}

void TestOrvexChartView::niceStep()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, length);
    QFETCH(double, step);
    QFETCH(double, lo);
    QFETCH(double, hi);
    const auto layout = OrvexChartView::calculateNiceStep(min, max, length, 50, 25);
    QTEST(layout.count, "count");
    QVERIFY2(near(layout.step, step, 1e-12) && near(layout.min, lo) && near(layout.max, hi),
             qPrintable(QString("%1 [%2, %3]").arg(layout.step).arg(layout.min).arg(layout.max)));
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
    QFETCH(QPointF, rangeX);
    QFETCH(QPointF, rangeY);
    auto view = makeView(800, 600);
    view->setAutoLimitsX(autoLimits);
    view->setAutoLimitsY(autoLimits);
    QSignalSpy fitted(view.get(), &OrvexChartView::fitCompleted);
    if (!x.isEmpty())
        addCurve(view.get(), std::vector<double>(x.begin(), x.end()), std::vector<double>(y.begin(), y.end()));
    view->fitView();
    QVERIFY(!fitted.isEmpty());
    QCOMPARE(view->zoomFactor(), 1.0);
    const auto rx = view->getRangeX();
    const auto ry = view->getRangeY();
    QVERIFY2(near(rx.first, rangeX.x(), 1e-12) && near(rx.second, rangeX.y(), 1e-12)
                 && near(ry.first, rangeY.x(), 1e-12) && near(ry.second, rangeY.y(), 1e-12),
             qPrintable(QString("%1 %2 %3 %4").arg(rx.first).arg(rx.second).arg(ry.first).arg(ry.second)));
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
    QTest::newRow("zero zooms out") << 0 << 1 / 1.2;
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
    const double underCursor = view->sceneToValue(centre).x();
    sendWheel(view.get(), viewPos(view.get(), centre), delta);
    settle(view.get());
    QCOMPARE(view->zoomFactor(), factor);
    const auto after = view->getRangeX();
    QVERIFY(near((before.second - before.first) / (after.second - after.first), factor));
    // The value under the cursor keeps its place along the axis.
    QVERIFY(near((underCursor - after.first) / (after.second - after.first),
                 (underCursor - before.first) / (before.second - before.first)));
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
    QTest::addColumn<QString>("entry"); // triggered
    QTest::addColumn<ViewCheck>("check");
    const auto row = [](const char* name, bool debug, bool polar, bool markers, const char* entry, ViewCheck check) {
        QStringList expected = kChartMenu;
        if (polar)
            expected.removeAll("Zoom to Area");
        if (!markers)
            expected = expected.mid(0, expected.indexOf("Add Horizontal Line Marker"));
        QTest::newRow(name) << debug << polar << markers << (debug ? expected + kDebugEntries : expected)
                            << QString(entry) << check;
    };
    // A line marker sits where the menu was opened; the point marker snaps to the curve.
    const auto marker = [](MarkerType type) {
        return [=](OrvexChartView& v, const QPointF& at) {
            const auto all = v.getMarkerManager()->allMarkers();
            return all.size() == 1 && all.front()->type() == type
                && (type == MarkerType::PointMarker || QLineF(all.front()->data(), at).length() < 1e-6);
        };
    };
    using V = OrvexChartView;
    row("polar type", false, false, true, "Change Type to/Polar",
        [](V& v, const QPointF&) { return v.isPolarChart(); });
    row("zoom out", false, false, true, "Zoom Out", [](V& v, const QPointF&) { return near(v.zoomFactor(), 1 / 1.2); });
    row("zoom to area", false, false, true, "Zoom to Area", [](V& v, const QPointF&) { return v.useRubberBandZoom(); });
    row("y log", false, false, true, "Show Y Axis in Log Scale", [](V& v, const QPointF&) {
        return v.useYLog() && v.chart()->axes(Qt::Vertical).contains(v.axisYLog());
    });
    row("vertical marker", false, false, true, "Add Vertical Line Marker", marker(MarkerType::VerticalLineMarker));
    row("point marker", false, false, true, "Add Point Marker", marker(MarkerType::PointMarker));
    // The dialog is checked by the test itself.
    row("configure", false, false, true, "Configure", [](V&, const QPointF&) { return true; });
    row("debug, test curves", true, false, true, "_test_add_curves",
        [](V& v, const QPointF&) { return v.legendLabels().size() == 3; }); // two beside "curve"
    row("debug, plot area", true, false, true, "_test_set_plot_area",
        [](V& v, const QPointF&) { return v.plotArea() == QRectF(80, 40, 400, 300); });
    row("polar, back to lines", false, true, true, "Change Type to/Line",
        [](V& v, const QPointF&) { return v.getViewType() == OrvexChartView::Line; });
    row("markers off", true, false, false, "Show X Axis in Log Scale", [](V& v, const QPointF&) {
        return v.useXLog() && v.chart()->axes(Qt::Horizontal).contains(v.axisXLog());
    });
}

void TestOrvexChartView::chartMenu()
{
    QFETCH(bool, debug);
    QFETCH(bool, polar);
    QFETCH(bool, markerAction);
    QFETCH(QString, entry);
    QFETCH(ViewCheck, check);
    if (debug)
        qputenv("MCAD_POST_PROCESS_DEBUG", "1");
    else
        qunsetenv("MCAD_POST_PROCESS_DEBUG");
    auto view = makeView();
    addCurve(view.get(), {1, 2, 3, 4}, {1, 4, 9, 16});
    view->enableMarkerAction(markerAction);
    if (polar)
        view->changeViewTypeTo(OrvexChartView::Polar);
    settle(view.get());
    QSignalSpy configure(view.get(), &OrvexChartView::configureRequested);
    const QPointF at = view->mapToScene(viewPos(view.get(), view->plotArea().center() + QPointF(-40, 30)));
    // "Configure" opens the modal configuration dialog; close it.
    const bool opensDialog = entry == "Configure";
    ModalCatcher dialog(ModalCatcher::Action(), opensDialog ? 10000 : 0);
    MenuInspector inspector(entry);
    rightClick(view.get(), at);
    settle(view.get());
    qunsetenv("MCAD_POST_PROCESS_DEBUG");
    QVERIFY(inspector.seen);
    QTEST(inspector.entries, "expected");
    QVERIFY(check(*view, view->sceneToValue(at)));
    QCOMPARE(configure.count(), opensDialog ? 1 : 0);
    QCOMPARE(dialog.caught(), opensDialog);
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
    QVERIFY(view->dumpViewInformation(dir.filePath("dump.txt")));
    const auto rx = view->getRangeX();
    const auto ry = view->getRangeY();
    const QString label = QString::fromStdString(marker->label());
    QCOMPARE(readFile(dir.filePath("dump.txt")),
             QStringList({"title: Gain", "chart type: cartesian chart", "log scale x: 0", "x axis label: Frequency",
                          QString("x axis range: [%1, %2]").arg(rx.first).arg(rx.second),
                          QString("x axis step: %1").arg(view->axisX()->tickInterval()), "x axis auto limits: 1",
                          "x axis auto divisions: 1", "y axis label: dB",
                          QString("y axis range: [%1, %2]").arg(ry.first).arg(ry.second),
                          QString("y axis step: %1").arg(view->axisY()->tickInterval()), "y axis auto limits: 1",
                          "y axis auto divisions: 1", "legend markers: [S11, ]", "markrs: {", label + ":(2.5, 0.25)",
                          label + " x unit:(GHz), y unit:(dB)", "}"})
                 .join('\n'));
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
    QVERIFY(view->dumpViewInformation(dir.filePath("polar.txt")));
    const auto mag = view->getRangeMagnitude();
    QCOMPARE(readFile(dir.filePath("polar.txt")).split('\n'),
             QStringList({"title: ", "chart type: polar chart", "angular axis label: Phi",
                          "angular axis range: [0, 360]", "angular axis divisions: 12", "magnitude axis label: Gain",
                          QString("magnitude axis range: [%1, %2]").arg(mag.first).arg(mag.second),
                          "magnitude axis divisions: 5", "magnitude axis auto limits: 1",
                          "magnitude axis normalized: 0", "legend markers: [pattern, ]", "markrs: {", "}"}));
}

void TestOrvexChartView::recordedStatements()
{
    RecordingHost host;
    auto view = makeView();
    const QString chart = QString::fromStdString(view->variableName());
    QVERIFY(chart.startsWith("Chart_"));
    QVERIFY(makeView(200, 200)->variableName() != view->variableName());
    host.statements.clear();
    view->setTitle("It's");
    view->changeViewTypeTo(OrvexChartView::Bar);
    view->reset();
    QTemporaryDir dir;
    const QString file = dir.filePath("c.json");
    addCurve(view.get(), {1, 2}, {3, 4});
    QVERIFY(view->exportJson(file));
    QVERIFY(view->importJson(file));
    QCOMPARE(host.statements,
             QStringList({chart + ".set_properties({'title' : 'It\\'s'})",
                          chart + ".set_properties({'plot_type' : pelo3dqtui.PlotType.RectangleBar})",
                          chart + ".reset()", chart + ".export_to('" + file + "')",
                          chart + ".import_from(['" + file + "'])"}));
}

void TestOrvexChartView::tickLabels_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("decimals from step") << 0.0 << 0.3 << 0.1 << QString() << QStringList{"0.0", "0.1", "0.2", "0.3"};
    QTest::newRow("user integer format") << 0.0 << 2.0 << 1.0 << "%03d" << QStringList{"000", "001", "002"};
    QTest::newRow("user float format") << 0.0 << 1.0 << 0.5 << "%.2e"
                                       << QStringList{"0.00e+00", "5.00e-01", "1.00e+00"};
    QTest::newRow("bad format falls back") << 0.0 << 1.0 << 1.0 << "abc" << QStringList{"0", "1"};
}

void TestOrvexChartView::tickLabels()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, step);
    QFETCH(QString, format);
    QStringList texts;
    const int count = int(std::lround((max - min) / step));
    for (const auto& [value, text] : RangeProbe::createTickLabels(min, max, count, step, format))
        texts << QString::fromStdString(text);
    QTEST(texts, "labels");
}

QTEST_MAIN(TestOrvexChartView)
#include "tst_orvexchartview.moc"
