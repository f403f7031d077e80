// One curve rendered into a 1600 x 900 image by the chart view and by its
// peers: each run hands the data over, renders a frame, zooms to the middle
// tenth of X and renders again. Peers are built only when found.
//
// Counters: points, and peak_mem_x_raw: the peak resident memory the first
// run adds (beyond the source arrays), as a multiple of the raw data, 16
// bytes a point. Set ORVEX_BENCH_PNG_DIR to save the frames of the 1M-point run.

#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QtCharts/QChartView>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>

#ifdef ORVEX_HAVE_QCUSTOMPLOT
#include <qcustomplot.h>
#endif
#ifdef ORVEX_HAVE_QWT
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_renderer.h>
#include <qwt_scale_div.h>
#endif

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <malloc.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace Gui::Widget;

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 900;

struct Curve
{
    std::vector<double> x;
    std::vector<double> y;
    double yMin = 0;
    double yMax = 0;
};

// A noisy sine on sorted X, the same for every library.
const Curve& curve(std::size_t n)
{
    static std::map<std::size_t, Curve> cache;
    auto& c = cache[n];
    if (c.x.empty()) {
        std::mt19937_64 random(42);
        std::normal_distribution<double> noise(0, 0.1);
        c.x.resize(n);
        c.y.resize(n);
        for (std::size_t i = 0; i < n; ++i) {
            c.x[i] = double(i);
            c.y[i] = std::sin(double(i) * 20 * M_PI / double(n)) + noise(random);
        }
        const auto [lo, hi] = std::minmax_element(c.y.begin(), c.y.end());
        c.yMin = *lo;
        c.yMax = *hi;
    }
    return c;
}

// Linux keeps a peak resident set size per process; writing 5 to
// clear_refs resets it, so each run measures its own peak.
long readStatusKb(const char* key)
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind(key, 0) == 0)
            return std::stol(line.substr(std::string(key).size()));
    }
    return 0;
}

class PeakMemory
{
public:
    PeakMemory()
    {
        std::ofstream("/proc/self/clear_refs") << "5";
        m_start = readStatusKb("VmRSS:");
    }
    double extraBytes() const { return double(readStatusKb("VmHWM:") - m_start) * 1024.0; }

private:
    long m_start = 0;
};

void savePng(const QImage& image, const std::string& library, const char* frame, std::size_t n)
{
    const QByteArray dir = qgetenv("ORVEX_BENCH_PNG_DIR");
    if (dir.isEmpty() || n != 1000000)
        return;
    image.save(QString::fromLocal8Bit(dir) + QStringLiteral("/%1_%2.png").arg(QString::fromStdString(library), frame));
}

// A white frame painted by @p paint.
template <typename Paint>
QImage renderInto(Paint&& paint)
{
    QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        paint(painter);
    }
    return image;
}

std::pair<double, double> zoomedRange(const Curve& c)
{
    const double span = c.x.back() - c.x.front();
    return {c.x.front() + 0.45 * span, c.x.front() + 0.55 * span};
}

// Runs @p run once untimed, measuring the peak memory it adds, then once per
// timed iteration: the times are of the steady state a user sees while
// zooming, not of first-use costs such as font loading.
template <typename Run>
void measure(benchmark::State& state, std::size_t n, Run&& run)
{
    double peak = 0;
    {
        PeakMemory memory;
        run();
        peak = memory.extraBytes();
    }
    for (auto _ : state)
        run();
    state.counters["points"] = double(n);
    state.counters["peak_mem_x_raw"] = peak / (16.0 * double(n));
}

void BM_OrvexChartView(benchmark::State& state)
{
    const std::size_t n = std::size_t(state.range(0));
    const Curve& c = curve(n);
    std::unique_ptr<OrvexChartView> view(OrvexChartView::createChartView(nullptr));
    view->resize(kWidth, kHeight);
    view->show();
    QCoreApplication::processEvents();
    auto target = view->getCurveManager()->createCurve(std::string("bench"));
    view->updateCurves();
    const auto zoom = zoomedRange(c);
    measure(state, n, [&] {
        target->setData(c.x, c.y);
        emit target->dataChanged();
        view->fitView();
        savePng(view->captureImage(kWidth, kHeight), "orvex", "full", n);
        view->setRangeX(zoom.first, zoom.second);
        savePng(view->captureImage(kWidth, kHeight), "orvex", "zoomed", n);
    });
}

void BM_QtChartsPlain(benchmark::State& state)
{
    using namespace QtCharts;
    const std::size_t n = std::size_t(state.range(0));
    const Curve& c = curve(n);
    auto* chart = new QChart();
    chart->legend()->hide();
    auto* series = new QLineSeries();
    chart->addSeries(series);
    auto* axisX = new QValueAxis();
    auto* axisY = new QValueAxis();
    chart->addAxis(axisX, Qt::AlignBottom);
    chart->addAxis(axisY, Qt::AlignLeft);
    series->attachAxis(axisX);
    series->attachAxis(axisY);
    QChartView view(chart);
    view.resize(kWidth, kHeight);
    view.show();
    QCoreApplication::processEvents();
    const auto zoom = zoomedRange(c);
    auto render = [&](const char* name) {
        savePng(renderInto([&](QPainter& painter) { view.render(&painter); }), "qtcharts", name, n);
    };
    measure(state, n, [&] {
        QVector<QPointF> points(static_cast<int>(n));
        for (std::size_t i = 0; i < n; ++i)
            points[int(i)] = QPointF(c.x[i], c.y[i]);
        series->replace(points);
        axisX->setRange(c.x.front(), c.x.back());
        axisY->setRange(c.yMin, c.yMax);
        render("full");
        axisX->setRange(zoom.first, zoom.second);
        render("zoomed");
    });
}

#ifdef ORVEX_HAVE_QCUSTOMPLOT
void BM_QCustomPlot(benchmark::State& state)
{
    const std::size_t n = std::size_t(state.range(0));
    const Curve& c = curve(n);
    QCustomPlot plot;
    plot.resize(kWidth, kHeight);
    QCPGraph* graph = plot.addGraph();
    const auto zoom = zoomedRange(c);
    auto render = [&](const char* name) {
        QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        {
            QCPPainter painter(&image);
            plot.toPainter(&painter, kWidth, kHeight);
        }
        savePng(image, "qcustomplot", name, n);
    };
    measure(state, n, [&] {
        QVector<double> x(static_cast<int>(n));
        QVector<double> y(static_cast<int>(n));
        std::copy(c.x.begin(), c.x.end(), x.begin());
        std::copy(c.y.begin(), c.y.end(), y.begin());
        graph->setData(x, y, true);
        plot.xAxis->setRange(c.x.front(), c.x.back());
        plot.yAxis->setRange(c.yMin, c.yMax);
        render("full");
        plot.xAxis->setRange(zoom.first, zoom.second);
        render("zoomed");
    });
}
#endif

#ifdef ORVEX_HAVE_QWT
void BM_Qwt(benchmark::State& state)
{
    const std::size_t n = std::size_t(state.range(0));
    const Curve& c = curve(n);
    QwtPlot plot;
    plot.resize(kWidth, kHeight);
    plot.setCanvasBackground(Qt::white);
    auto* qwtCurve = new QwtPlotCurve();
    qwtCurve->attach(&plot);
    const auto zoom = zoomedRange(c);
    QwtPlotRenderer renderer;
    auto render = [&](const char* name) {
        savePng(renderInto([&](QPainter& painter) { renderer.render(&plot, &painter, QRectF(0, 0, kWidth, kHeight)); }),
                "qwt", name, n);
    };
    measure(state, n, [&] {
        qwtCurve->setSamples(c.x.data(), c.y.data(), int(n));
        plot.setAxisScale(QwtPlot::xBottom, c.x.front(), c.x.back());
        plot.setAxisScale(QwtPlot::yLeft, c.yMin, c.yMax);
        plot.replot();
        render("full");
        plot.setAxisScale(QwtPlot::xBottom, zoom.first, zoom.second);
        plot.replot();
        render("zoomed");
    });
}
#endif

void sizes(benchmark::internal::Benchmark* b)
{
    b->Arg(100000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

BENCHMARK(BM_OrvexChartView)->Apply(sizes)->Iterations(3);
BENCHMARK(BM_QtChartsPlain)->Apply(sizes)->Iterations(1);
#ifdef ORVEX_HAVE_QCUSTOMPLOT
BENCHMARK(BM_QCustomPlot)->Apply(sizes)->Iterations(3);
#endif
#ifdef ORVEX_HAVE_QWT
BENCHMARK(BM_Qwt)->Apply(sizes)->Iterations(3);
#endif

int main(int argc, char** argv)
{
    // Keep freed memory in the process: every library allocates its buffers
    // afresh each run, and on a virtual machine the page faults of returned
    // and re-fetched memory would otherwise outweigh the drawing itself.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
