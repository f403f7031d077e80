// The reduced curve against every point, as the screen paints the view (the
// viewport grabbed through Qt's paint path, not a capture), at device pixel
// ratios 1, 1.5 and 2. The ratio is a process setting, so each ratio runs
// in a child process of this test.

#include "ChartTestHelpers.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QtCharts/QLineSeries>

using namespace Gui::Widget;
using namespace ChartTest;

class TestOrvexChartScreenPixels : public QObject
{
    Q_OBJECT

private slots:
    void identicalOnScreen_data();
    void identicalOnScreen();
};

void TestOrvexChartScreenPixels::identicalOnScreen_data()
{
    QTest::addColumn<QByteArray>("scale");
    QTest::newRow("ratio 1") << QByteArray("1");
    QTest::newRow("ratio 1.5") << QByteArray("1.5");
    QTest::newRow("ratio 2") << QByteArray("2");
}

void TestOrvexChartScreenPixels::identicalOnScreen()
{
    QFETCH(QByteArray, scale);
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromLatin1(scale));
    env.insert(QStringLiteral("ORVEX_SCREEN_PIXELS_CHILD"), QStringLiteral("1"));
    child.setProcessEnvironment(env);
    child.start(QCoreApplication::applicationFilePath(), QStringList());
    QVERIFY(child.waitForFinished(120000));
    const QString report = QString::fromLatin1(child.readAllStandardOutput()).trimmed();
    QCOMPARE(child.exitCode(), 0);
    // "<ratio> <kept> <points> <differing pixels>"
    const QStringList parts = report.split(QLatin1Char(' '));
    QCOMPARE(parts.size(), 4);
    QCOMPARE(parts[0].toDouble(), scale.toDouble());
    QVERIFY2(parts[1].toInt() < parts[2].toInt() / 10, qPrintable(report));
    QCOMPARE(parts[3].toInt(), 0);
}

namespace {

// Draws a random walk reduced and in full and prints what it saw.
int childMain()
{
    std::vector<double> x(200000);
    std::vector<double> y(200000);
    QRandomGenerator random(7);
    double v = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = double(i);
        v += random.generateDouble() - 0.5;
        y[i] = v;
    }
    auto view = makeView(800, 500);
    view->setLegendVisibility(false);
    auto curve = addCurve(view.get(), x, y);
    const QImage reduced = view->viewport()->grab().toImage();
    const int kept = view->seriesOf(curve->id())->count();
    view->setDecimationEnabled(false);
    settle(view.get());
    const QImage full = view->viewport()->grab().toImage();
    int differing = reduced.size() == full.size() ? 0 : -1;
    for (int row = 0; differing >= 0 && row < reduced.height(); ++row)
        for (int column = 0; column < reduced.width(); ++column)
            differing += reduced.pixel(column, row) != full.pixel(column, row);
    std::printf("%g %d %d %d\n", view->viewport()->devicePixelRatioF(), kept,
                view->seriesOf(curve->id())->count(), differing);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (qEnvironmentVariableIsSet("ORVEX_SCREEN_PIXELS_CHILD"))
        return childMain();
    TestOrvexChartScreenPixels test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_orvexchartscreenpixels.moc"
