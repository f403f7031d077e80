// JSON curve files against plain file I/O of the same bytes, and setData of a
// large curve with and without handing over the vectors.

#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>

using namespace Gui::Widget;

namespace {

constexpr std::size_t kFilePoints = 1'000'000;
constexpr std::size_t kLargePoints = 10'000'000;

std::vector<double> samples(std::size_t n, double phase)
{
    std::vector<double> v(n);
    for (std::size_t i = 0; i < n; ++i)
        v[i] = std::sin(static_cast<double>(i) * 1e-3 + phase) * 40.0 - 20.0;
    return v;
}

struct Fixture
{
    Fixture()
    {
        manager = std::make_shared<OrvexCurveManager>(nullptr);
        manager->createCurve(samples(kFilePoints, 0.0), samples(kFilePoints, 1.0), "big");
        path = dir.filePath(QStringLiteral("curve.json"));
        manager->exportData(path);
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        bytes = file.readAll();
    }

    QTemporaryDir dir;
    QString path;
    QByteArray bytes;
    std::shared_ptr<OrvexCurveManager> manager;
};

Fixture& fixture()
{
    static Fixture f;
    return f;
}

void BM_JsonExport(benchmark::State& state)
{
    auto& f = fixture();
    for (auto _ : state)
        benchmark::DoNotOptimize(f.manager->exportData(f.path));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * f.bytes.size());
}
BENCHMARK(BM_JsonExport)->Unit(benchmark::kMillisecond);

void BM_QFileWriteSameBytes(benchmark::State& state)
{
    auto& f = fixture();
    for (auto _ : state) {
        QFile file(f.path);
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        benchmark::DoNotOptimize(file.write(f.bytes));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * f.bytes.size());
}
BENCHMARK(BM_QFileWriteSameBytes)->Unit(benchmark::kMillisecond);

void BM_JsonImport(benchmark::State& state)
{
    auto& f = fixture();
    f.manager->exportData(f.path);
    auto target = std::make_shared<OrvexCurveManager>(nullptr);
    for (auto _ : state)
        benchmark::DoNotOptimize(target->importData(f.path));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * f.bytes.size());
}
BENCHMARK(BM_JsonImport)->Unit(benchmark::kMillisecond);

void BM_QFileReadSameBytes(benchmark::State& state)
{
    auto& f = fixture();
    for (auto _ : state) {
        QFile file(f.path);
        file.open(QIODevice::ReadOnly | QIODevice::Text);
        benchmark::DoNotOptimize(file.readAll());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * f.bytes.size());
}
BENCHMARK(BM_QFileReadSameBytes)->Unit(benchmark::kMillisecond);

void BM_SetDataCopy(benchmark::State& state)
{
    const auto x = samples(kLargePoints, 0.0);
    const auto y = samples(kLargePoints, 1.0);
    OrvexCurve curve(nullptr, "large");
    for (auto _ : state)
        curve.setData(x, y);
}
BENCHMARK(BM_SetDataCopy)->Unit(benchmark::kMicrosecond);

void BM_SetDataMove(benchmark::State& state)
{
    const auto x = samples(kLargePoints, 0.0);
    const auto y = samples(kLargePoints, 1.0);
    OrvexCurve curve(nullptr, "large");
    for (auto _ : state) {
        state.PauseTiming();
        auto xs = x;
        auto ys = y;
        state.ResumeTiming();
        curve.setData(std::move(xs), std::move(ys));
        state.PauseTiming();
        // Free the previous buffers outside the timed part.
        curve.setData(std::vector<double>(), std::vector<double>());
        state.ResumeTiming();
    }
}
// The timed part is tiny next to the untimed copies, so the count is fixed.
BENCHMARK(BM_SetDataMove)->Unit(benchmark::kMicrosecond)->Iterations(30);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
