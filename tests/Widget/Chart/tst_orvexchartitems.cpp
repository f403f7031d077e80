#include "ChartTestHelpers.h"

#include "Widget/Chart/OrvexLegendItem.h"
#include "Widget/Chart/OrvexLegendTipItem.h"
#include "Widget/Chart/OrvexProbeItem.h"
#include "Widget/Chart/OrvexSeriesDecimator.h"

#include <QPainter>
#include <QRandomGenerator>
#include <QtCharts/QLineSeries>

#include <algorithm>
#include <cmath>

using namespace Gui::Widget;
using namespace ChartTest;

Q_DECLARE_METATYPE(Gui::Widget::OrvexSeriesDecimator::AxisMap)

namespace {

// A random walk of @p n points on X = 0, 1, 2, ...
std::pair<std::vector<double>, std::vector<double>> randomWalk(std::size_t n, quint32 seed)
{
    QRandomGenerator random(seed);
    std::vector<double> x(n);
    std::vector<double> y(n);
    double v = 0;
    for (std::size_t i = 0; i < n; ++i) {
        x[i] = double(i);
        v += random.generateDouble() - 0.5;
        y[i] = v;
    }
    return {x, y};
}

// Pixels that differ between two images of one size (-1 if sizes differ).
int differingPixels(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return -1;
    int differing = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            differing += a.pixel(x, y) != b.pixel(x, y);
    return differing;
}

} // namespace

class TestOrvexChartItems : public QObject
{
    Q_OBJECT

private slots:
    void curveColourAlongPath_data();
    void curveColourAlongPath();
    void decimationPixelIdentical_data();
    void decimationPixelIdentical();
    void decimationFollowsZoomAndPan();
    void m4MatchesFullDrawing_data();
    void m4MatchesFullDrawing();
    void m4AnyPenKeepsColumnExtremes();
    void pixelReductionDropsRepeats();
    void probePlacement_data();
    void probePlacement();
    void probeConnector_data();
    void probeConnector();
    void probeFollowsMouse();
    void barsOfVisibleCurvesOnly();
    void legendEntriesAndDocking();
};

void TestOrvexChartItems::curveColourAlongPath_data()
{
    QTest::addColumn<int>("viewType");
    QTest::newRow("line") << int(OrvexChartView::Line);
    QTest::newRow("polar") << int(OrvexChartView::Polar);
}

void TestOrvexChartItems::curveColourAlongPath()
{
    QFETCH(int, viewType);
    auto view = makeView(700, 500);
    view->setLegendVisibility(false);
    std::vector<double> x;
    std::vector<double> y;
    for (int i = 0; i <= 200; ++i) {
        x.push_back(i * 1.8);
        y.push_back(2 + std::sin(i * 0.05));
    }
    auto curve = addCurve(view.get(), x, y);
    curve->setColor(QColor(0, 160, 0));
    curve->setWidth(2);
    view->changeViewTypeTo(OrvexChartView::ViewType(viewType));
    const QImage image = grabView(view.get());
    int hits = 0;
    for (int i = 5; i < 200; i += 10) {
        const QPoint p = view->valueToScene(QPointF(x[i], y[i])).toPoint();
        hits += countColour(image, QRect(p - QPoint(2, 2), QSize(5, 5)), QColor(0, 160, 0)) > 0 ? 1 : 0;
    }
    QCOMPARE(hits, 20);
    // Away from the path there is none of it.
    const QPoint away = view->valueToScene(QPointF(x[100], y[100] + 0.6)).toPoint();
    QCOMPARE(countColour(image, QRect(away - QPoint(2, 2), QSize(5, 5)), QColor(0, 160, 0)), 0);
}

// Through Qt Charts' own log domains (the linear view is covered as the
// screen paints it).
void TestOrvexChartItems::decimationPixelIdentical_data()
{
    QTest::addColumn<bool>("logX");
    QTest::addColumn<bool>("logY");
    QTest::newRow("log X") << true << false;
    QTest::newRow("log Y") << false << true;
}

void TestOrvexChartItems::decimationPixelIdentical()
{
    QFETCH(bool, logX);
    QFETCH(bool, logY);
    const int points = 100000;
    auto view = makeView(800, 500);
    view->setLegendVisibility(false);
    auto [x, y] = randomWalk(std::size_t(points), 7);
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] += logX ? 1 : 0;
        y[i] = logY ? std::exp(y[i] / 40) : y[i];
    }
    auto curve = addCurve(view.get(), x, y);
    view->setUseXLog(logX);
    view->setUseYLog(logY);
    view->reset();
    settle(view.get());
    const QImage reduced = grabView(view.get());
    const int drawn = view->seriesOf(curve->id())->count();
    QVERIFY2(drawn < points / 5, qPrintable(QString::number(drawn)));
    view->setDecimationEnabled(false);
    const QImage full = grabView(view.get());
    QCOMPARE(view->seriesOf(curve->id())->count(), points);
    QCOMPARE(differingPixels(reduced, full), 0);
}

void TestOrvexChartItems::decimationFollowsZoomAndPan()
{
    auto view = makeView(800, 500);
    view->setLegendVisibility(false);
    auto [x, y] = randomWalk(300000, 11);
    auto curve = addCurve(view.get(), x, y);
    const QPointF centre = view->mapToScene(viewPos(view.get(), view->plotArea().center()));
    for (int i = 0; i < 6; ++i) {
        QWheelEvent wheel(view->mapFromScene(centre), view->viewport()->mapToGlobal(view->mapFromScene(centre)),
                          QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view->viewport(), &wheel);
    }
    // Pan by dragging the plot.
    const QPoint from = view->mapFromScene(centre);
    QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, from);
    moveMouse(view.get(), from + QPoint(-120, 10));
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, from + QPoint(-120, 10));
    settle(view.get());
    const auto range = view->getRangeX();
    QVERIFY(range.second - range.first < 300000 / 2.0);
    // The series covers the visible part only, plus one point on each side.
    const auto pts = view->seriesOf(curve->id())->pointsVector();
    QVERIFY(!pts.isEmpty());
    QVERIFY(pts.first().x() <= range.first && pts.first().x() >= range.first - 1);
    QVERIFY(pts.last().x() >= range.second && pts.last().x() <= range.second + 1);
    const QImage reduced = grabView(view.get());
    view->setDecimationEnabled(false);
    QCOMPARE(differingPixels(reduced, grabView(view.get())), 0);
}

namespace {

using AxisMap = OrvexSeriesDecimator::AxisMap;

AxisMap axisMap(double min, double max, double origin, double length, bool log = false, bool vertical = false,
                double scale = 1)
{
    AxisMap map;
    map.scale = scale;
    map.min = min;
    map.max = max;
    map.origin = origin;
    map.length = length;
    map.log = log;
    map.vertical = vertical;
    return map;
}

// Draws @p points the way a chart draws a solid one-pixel line series: one
// drawLine per segment, clipped to the plot.
QImage drawLineSeries(const QVector<QPointF>& points, const AxisMap& xMap, const AxisMap& yMap)
{
    const double width = xMap.scale * xMap.length;
    const double height = yMap.scale * yMap.length;
    QImage image(int(xMap.origin + width) + 30, int(yMap.origin + height) + 30, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    QPen pen(Qt::black, 1);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.setClipRect(QRectF(xMap.origin, yMap.origin, width, height));
    QPointF previous;
    for (int i = 0; i < points.size(); ++i) {
        const QPointF p(xMap.toDevice(points[i].x()), yMap.toDevice(points[i].y()));
        if (i > 0)
            painter.drawLine(previous, p);
        previous = p;
    }
    return image;
}

} // namespace

void TestOrvexChartItems::m4MatchesFullDrawing_data()
{
    QTest::addColumn<QVector<QPointF>>("points");
    QTest::addColumn<AxisMap>("xMap");
    QTest::addColumn<AxisMap>("yMap");
    QTest::addColumn<int>("maxKept");
    QRandomGenerator random(5);
    auto series = [&](int n, auto&& x, auto&& y) {
        QVector<QPointF> points(n);
        for (int i = 0; i < n; ++i)
            points[i] = QPointF(x(i), y(i));
        return points;
    };
    double walk = 0;
    // Every column starts exactly on its left edge: steep lines from there
    // reach into the neighbouring column with their caps.
    QTest::newRow("random walk, points on column edges")
        << series(40000, [](int i) { return i * 0.01; }, [&](int) { return walk += random.generateDouble() - 0.5; })
        << axisMap(0, 400, 20, 400) << axisMap(-60, 60, 20, 300, false, true) << 400 * 6;
    // Dense and smooth: most lines are shorter than a 64th of a pixel.
    QTest::newRow("smooth sine, fractional origin")
        << series(200000, [](int i) { return double(i); }, [](int i) { return std::sin(i * 3e-5); })
        << axisMap(0, 199999, 20.37, 437.5) << axisMap(-1.1, 1.1, 11.6, 301.3, false, true) << 438 * 6;
    // Values on exact pixel rows.
    QTest::newRow("integer steps on pixel rows")
        << series(50000, [](int i) { return i * 0.0087; }, [&](int) { return std::floor(walk += random.generateDouble() - 0.5); })
        << axisMap(0, 435, 20, 435) << axisMap(-100, 100, 30, 400, false, true) << 435 * 6;
    // Half of the noise lies beyond the plot: Qt clips those lines first.
    QTest::newRow("noise beyond the plot")
        << series(60000, [](int i) { return double(i); }, [&](int) { return random.generateDouble() * 4 - 2; })
        << axisMap(0, 59999, 15, 380) << axisMap(-1, 1, 40, 250, false, true) << 380 * 6;
    QTest::newRow("log X")
        << series(80000, [](int i) { return 1 + i * 0.5; }, [](int i) { return std::cos(i * 1e-3) * (1 + i % 7); })
        << axisMap(1, 40000, 20, 400, true) << axisMap(-8, 8, 20, 300, false, true) << 400 * 6;
    QTest::newRow("log Y")
        << series(80000, [](int i) { return double(i); }, [&](int) { return std::pow(10, random.generateDouble() * 4); })
        << axisMap(0, 79999, 20, 400) << axisMap(1, 1e4, 20, 300, true, true) << 400 * 6;
    // Repeated points are drawn as dots, often in the next column, where they
    // keep their column whole; NaN points are left out.
    QTest::newRow("repeats and gaps")
        << series(60000, [](int i) { return (i - i % 3 / 2) * 0.007; },
                  [&](int i) { return i % 13 == 0 ? qQNaN() : (walk += (i % 3 == 2 ? 0 : random.generateDouble() - 0.5)); })
        << axisMap(0, 420, 20, 420) << axisMap(-150, 150, 20, 300, false, true) << 60000 * 3 / 5;
    // A high-density screen: columns of device pixels, 1.5 to a logical one.
    double scaledWalk = 0;
    QTest::newRow("1.5 device pixels a pixel")
        << series(60000, [](int i) { return double(i); },
                  [&](int) { return scaledWalk += random.generateDouble() - 0.5; })
        << axisMap(0, 59999, 30, 300, false, false, 1.5) << axisMap(-200, 200, 30, 200, false, true, 1.5)
        << 450 * 6;
    // Few points a column: nothing to gain, everything kept.
    QTest::newRow("sparse")
        << series(300, [](int i) { return i * 1.3; }, [&](int) { return random.generateDouble(); })
        << axisMap(0, 390, 20, 400) << axisMap(0, 1, 20, 300, false, true) << 300;
}

void TestOrvexChartItems::m4MatchesFullDrawing()
{
    QFETCH(QVector<QPointF>, points);
    QFETCH(AxisMap, xMap);
    QFETCH(AxisMap, yMap);
    QFETCH(int, maxKept);
    std::vector<double> x(points.size());
    std::vector<double> y(points.size());
    for (int i = 0; i < points.size(); ++i) {
        x[i] = points[i].x();
        y[i] = points[i].y();
    }
    QVector<QPointF> reduced;
    OrvexSeriesDecimator::m4(x.data(), y.data(), x.size(), xMap, yMap, OrvexSeriesDecimator::OnePixelLine, reduced);
    QVERIFY2(reduced.size() <= maxKept, qPrintable(QString::number(reduced.size())));
    points.erase(std::remove_if(points.begin(), points.end(), [](const QPointF& p) { return std::isnan(p.y()); }),
                 points.end());
    const QImage full = drawLineSeries(points, xMap, yMap);
    const QImage drawn = drawLineSeries(reduced, xMap, yMap);
    QCOMPARE(differingPixels(drawn, full), 0);
}

void TestOrvexChartItems::m4AnyPenKeepsColumnExtremes()
{
    // Two columns of 8 points at one pixel a unit: first, lowest, highest
    // and last of each, in data order.
    std::vector<double> x;
    std::vector<double> y{5, 1, 3, 9, 4, 4, 2, 6, 2, 8, 5, 5, 1, 5, 5, 3};
    for (int i = 0; i < 16; ++i)
        x.push_back(i / 8 + (i % 8) * 0.1 + 0.05);
    const AxisMap xMap = axisMap(0, 10, 0, 10);
    const AxisMap yMap = axisMap(0, 10, 0, 10, false, true);
    QVector<QPointF> out;
    OrvexSeriesDecimator::m4(x.data(), y.data(), x.size(), xMap, yMap, OrvexSeriesDecimator::AnyPen, out);
    QVector<QPointF> expected;
    for (int i : {0, 1, 3, 7, 8, 9, 12, 15})
        expected.append(QPointF(x[i], y[i]));
    QCOMPARE(out, expected);
    // Outside the visible range only the neighbours of the edges stay.
    std::vector<double> x3(100);
    std::vector<double> y3(100, 1.0);
    for (int i = 0; i < 100; ++i)
        x3[i] = i;
    OrvexSeriesDecimator::m4(x3.data(), y3.data(), x3.size(), axisMap(40.5, 42.5, 0, 10), yMap,
                             OrvexSeriesDecimator::AnyPen, out);
    QCOMPARE(out, (QVector<QPointF>{{40, 1}, {41, 1}, {42, 1}, {43, 1}}));
}

void TestOrvexChartItems::pixelReductionDropsRepeats()
{
    const std::vector<double> x{0.1, 0.2, 0.3, 5.0, 5.1, 0.2};
    const std::vector<double> y{0.1, 0.4, 0.2, 5.0, 5.2, 0.3};
    QVector<QPointF> out;
    OrvexSeriesDecimator::reduceInPixelSpace(x.data(), y.data(), x.size(),
                                             [](double a, double b) { return QPointF(a, b); }, out);
    // Runs on one pixel keep their first and last point.
    QCOMPARE(out, (QVector<QPointF>{{0.1, 0.1}, {0.3, 0.2}, {5.0, 5.0}, {5.1, 5.2}, {0.2, 0.3}}));
}

void TestOrvexChartItems::probePlacement_data()
{
    QTest::addColumn<QPointF>("fraction");
    QTest::addColumn<bool>("left");
    QTest::addColumn<bool>("above");
    QTest::newRow("bottom-right flips both") << QPointF(0.97, 0.03) << true << true;
    QTest::newRow("top-left stays") << QPointF(0.05, 0.95) << false << false;
    QTest::newRow("right edge flips left") << QPointF(0.97, 0.6) << true << false;
    QTest::newRow("bottom edge flips up") << QPointF(0.3, 0.03) << false << true;
}

void TestOrvexChartItems::probePlacement()
{
    QFETCH(QPointF, fraction);
    QFETCH(bool, left);
    QFETCH(bool, above);
    auto view = makeView(700, 500);
    view->setLegendVisibility(false);
    view->setAutoLimitsX(false);
    view->setAutoLimitsY(false);
    auto curve = addCurve(view.get(), {0, 100}, {0, 100});
    curve->setXUnit("Hz");
    const QPointF data(fraction.x() * 100, fraction.y() * 100);
    view->probeItem()->setProbe(data, curve->id());
    QCOMPARE(view->probeItem()->texts().first(), QString(" X = %1 Hz").arg(data.x()));
    const QPointF p = view->probeItem()->probePoint();
    const QRectF box = view->probeItem()->boxRect();
    QCOMPARE(box.right() <= p.x() - 10 + 1e-9, left);
    QCOMPARE(box.left() >= p.x() + 10 - 1e-9, !left);
    QCOMPARE(box.bottom() <= p.y() - 10 + 1e-9, above);
    QCOMPARE(box.top() >= p.y() + 10 - 1e-9, !above);
    // What is drawn: the white box with its black outline where the rectangle says.
    const QImage image = grabView(view.get());
    const QRect inner = box.toAlignedRect().adjusted(3, 3, -3, -3);
    QVERIFY(countInk(image, inner) > 20);  // the texts
    const QRect topEdge(int(box.left() + box.width() / 3), int(std::floor(box.top())) - 1, int(box.width() / 3), 3);
    QVERIFY(countInk(image, topEdge) >= topEdge.width());
    // The cross: its horizontal stroke 4 px left of the point.
    QVERIFY(countColour(image, QRect(p.toPoint() + QPoint(-4, -1), QSize(1, 3)), Qt::black, 80) >= 1);
}

void TestOrvexChartItems::probeConnector_data()
{
    QTest::addColumn<bool>("connector");
    QTest::newRow("on") << true;
    QTest::newRow("off") << false;
}

void TestOrvexChartItems::probeConnector()
{
    QFETCH(bool, connector);
    auto view = makeView(700, 500);
    view->setLegendVisibility(false);
    auto curve = addCurve(view.get(), {0, 100}, {100, 100});
    curve->setColor(QColor(255, 200, 200));
    view->setDrawConnector(connector);
    view->probeItem()->setProbe(QPointF(30, 100), curve->id());
    const QPointF p = view->probeItem()->probePoint();
    const QRectF box = view->probeItem()->boxRect();
    // The nearest corner of the unflipped box is its top-left, 10 px off on both axes.
    QCOMPARE(view->probeItem()->connectorLine().isNull(), !connector);
    const QImage image = grabView(view.get());
    const QPointF middle = (p + box.topLeft()) / 2;
    const int ink = countInk(image, QRect(middle.toPoint() - QPoint(1, 1), QSize(3, 3)));
    QCOMPARE(ink > 0, connector);
}

void TestOrvexChartItems::probeFollowsMouse()
{
    auto view = makeView(700, 500);
    auto curve = addCurve(view.get(), {0, 1, 2, 3, 4, 5}, {0, 2, 1, 3, 2, 4});
    const QPoint near = viewPos(view.get(), view->valueToScene(QPointF(3, 3)) + QPointF(4, 5));
    moveMouse(view.get(), near, Qt::NoButton);
    QVERIFY(view->probeItem()->hasProbe());
    QCOMPARE(view->probeItem()->dataPoint(), QPointF(3, 3));
    QCOMPARE(view->probeItem()->curveId(), curve->id());
    view->setUseAutoTip(false);
    QVERIFY(!view->probeItem()->hasProbe());
}

void TestOrvexChartItems::barsOfVisibleCurvesOnly()
{
    auto view = makeView(700, 500);
    view->setLegendVisibility(false);
    auto curve = addCurve(view.get(), {1, 2, 3, 4}, {3, 5, 2, 4});
    curve->setColor(QColor(200, 0, 200));
    curve->setBarWidth(12);
    view->changeViewTypeTo(OrvexChartView::Bar);
    // Room for the outer bars, which would be cut in half at the plot edges.
    view->setAutoLimitsX(false);
    view->setRangeX(0, 5);
    const QRect area = view->plotArea().toRect().adjusted(2, 2, -2, -2);
    const QImage shown = grabView(view.get());
    // Four bars 12 px wide from the X axis up to each point.
    const int expected = [&] {
        int total = 0;
        const QRectF plot = view->plotArea();
        const double baseline = std::clamp(view->valueToScene(QPointF(0, 0)).y(), plot.top(), plot.bottom());
        for (const auto& v : {QPointF(1, 3), QPointF(2, 5), QPointF(3, 2), QPointF(4, 4)})
            total += int(12 * (baseline - view->valueToScene(v).y()));
        return total;
    }();
    const int purple = countColour(shown, area, QColor(200, 0, 200), 20);
    QVERIFY2(purple > expected * 0.8, qPrintable(QString("%1 of %2").arg(purple).arg(expected)));
    curve->setVisible(false);
    QCOMPARE(countColour(grabView(view.get()), area, QColor(200, 0, 200), 20), 0);
}

void TestOrvexChartItems::legendEntriesAndDocking()
{
    auto view = makeView(700, 500);
    addCurve(view.get(), {0, 1}, {0, 1}, "first");
    auto second = addCurve(view.get(), {0, 1}, {1, 0}, "second");
    second->setSuffix("(dB)");
    auto* legend = view->legendItem();
    QCOMPARE(view->legendLabels(), (QStringList{"first", "second (dB)"}));
    QVERIFY(legend->docked());
    const QRectF area = view->plotArea();
    QVERIFY(area.contains(legend->legendRect()));
    QVERIFY(legend->legendRect().right() > area.center().x());
    // Hovering shows the entry and the docking hint.
    const QPoint entry = viewPos(view.get(), legend->legendRect().center() + QPointF(0, 5));
    moveMouse(view.get(), entry, Qt::NoButton);
    QVERIFY(view->legendTipItem()->isShown());
    QVERIFY(view->legendTipItem()->text().endsWith("Double left click to float"));
    // Dragging floats it along.
    const QRectF before = legend->legendRect();
    QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, entry);
    moveMouse(view.get(), entry + QPoint(-200, 100));
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, entry + QPoint(-200, 100));
    QVERIFY(!legend->docked());
    QCOMPARE(legend->legendRect().topLeft(), before.topLeft() + QPointF(-200, 100));
    moveMouse(view.get(), entry + QPoint(-200, 100), Qt::NoButton);
    QVERIFY(view->legendTipItem()->text().endsWith("Double left click to dock"));
    // A double click docks it again.
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, entry + QPoint(-200, 100));
    QVERIFY(legend->docked());
    QCOMPARE(legend->legendRect(), before);
    view->setLegendVisibility(false);
    QVERIFY(!legend->isVisible());
}

QTEST_MAIN(TestOrvexChartItems)
#include "tst_orvexchartitems.moc"
