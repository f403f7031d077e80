// CSV curve files of 1,000,000 rows and 4 columns against the plain ways of
// doing the same: reading with QFile, QString::split and toDouble, Python's
// csv module, and writing the same text with QFile. The ratios are printed
// after the runs.

#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveCsvFile.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include "RatioReporter.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>

#include <cmath>
#include <cstdio>
#include <map>

using namespace Gui::Widget;
using Flavour = OrvexCurveCsvFile::Flavour;

namespace {

constexpr std::size_t kRows = 1'000'000;
constexpr int kCurves = 3;

struct Fixture
{
    Fixture()
        : manager(std::make_shared<OrvexCurveManager>(nullptr))
    {
        auto group = manager->createGroup("bench");
        manager->setCurrentGroup("bench");
        std::vector<double> x(kRows);
        for (std::size_t i = 0; i < kRows; ++i)
            x[i] = static_cast<double>(i) * 1e-3;
        for (int c = 0; c < kCurves; ++c) {
            std::vector<double> y(kRows);
            for (std::size_t i = 0; i < kRows; ++i)
                y[i] = std::sin(x[i] * (c + 1)) * 40.0 - 20.0 * c;
            auto curve = group->createCurve(std::string());
            curve->setTitle("curve" + std::to_string(c));
            curve->setYUnit("dB");
            curve->setData(x, std::move(y));
        }
        for (const Flavour flavour : {Flavour::Comma, Flavour::Blank}) {
            const QString path = this->path(flavour);
            OrvexCurveCsvFile::exportGroup(*group, path, flavour);
            QFile file(path);
            file.open(QIODevice::ReadOnly);
            bytes[flavour] = file.readAll();
        }
    }

    QString path(Flavour flavour) const
    {
        return dir.filePath(flavour == Flavour::Comma ? QStringLiteral("comma.csv") : QStringLiteral("blank.csv"));
    }

    QTemporaryDir dir;
    std::shared_ptr<OrvexCurveManager> manager;
    std::map<Flavour, QByteArray> bytes;
};

Fixture& fixture()
{
    static Fixture f;
    return f;
}

void setBytes(benchmark::State& state, Flavour flavour)
{
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * fixture().bytes[flavour].size());
}

// ------------------------------------------------------------ import

void BM_CsvImport(benchmark::State& state, Flavour flavour)
{
    auto& f = fixture();
    const QStringList files{f.path(flavour)};
    for (auto _ : state) {
        auto manager = std::make_shared<OrvexCurveManager>(nullptr);
        auto group = manager->createGroup("import");
        if (OrvexCurveCsvFile::importFiles(*group, files, flavour) != kCurves)
            state.SkipWithError("wrong number of curves");
        state.PauseTiming();
        manager->removeAll();
        state.ResumeTiming();
    }
    setBytes(state, flavour);
}
BENCHMARK_CAPTURE(BM_CsvImport, comma, Flavour::Comma)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_CsvImport, blank, Flavour::Blank)->Unit(benchmark::kMillisecond);

// What a first attempt would do: the whole text as one QString, split into
// lines and cells, each cell through toDouble.
void BM_QFileSplitToDouble(benchmark::State& state, Flavour flavour)
{
    auto& f = fixture();
    const QChar separator = flavour == Flavour::Comma ? QLatin1Char(',') : QLatin1Char(' ');
    for (auto _ : state) {
        QFile file(f.path(flavour));
        file.open(QIODevice::ReadOnly | QIODevice::Text);
        const QString text = QString::fromLatin1(file.readAll());
        std::vector<std::vector<double>> columns(kCurves + 1);
        for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            if (line.startsWith(QLatin1Char('#')))
                continue;
            const QStringList cells = line.split(separator, Qt::SkipEmptyParts);
            for (int i = 0; i < cells.size() && i <= kCurves; ++i)
                columns[static_cast<std::size_t>(i)].push_back(cells[i].toDouble());
        }
        if (columns[0].size() != kRows)
            state.SkipWithError("wrong number of rows");
        benchmark::DoNotOptimize(columns);
    }
    setBytes(state, flavour);
}
BENCHMARK_CAPTURE(BM_QFileSplitToDouble, comma, Flavour::Comma)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_QFileSplitToDouble, blank, Flavour::Blank)->Unit(benchmark::kMillisecond);

// Python's csv module into four lists of floats; the script times itself,
// so interpreter start-up is not counted.
void BM_PythonCsvModule(benchmark::State& state)
{
    auto& f = fixture();
    const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
    if (python.isEmpty()) {
        state.SkipWithError("python3 not found");
        return;
    }
    for (auto _ : state) {
        QProcess process;
        process.start(python, {QStringLiteral(ORVEX_CSV_PYTHON_BASELINE), f.path(Flavour::Comma), QStringLiteral("3")});
        process.waitForFinished(-1);
        bool ok = false;
        const double seconds = QString::fromLatin1(process.readAllStandardOutput()).trimmed().toDouble(&ok);
        if (!ok || process.exitCode() != 0) {
            state.SkipWithError("python baseline failed");
            break;
        }
        state.SetIterationTime(seconds);
    }
    setBytes(state, Flavour::Comma);
}
BENCHMARK(BM_PythonCsvModule)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

// ------------------------------------------------------------ export

void BM_CsvExport(benchmark::State& state, Flavour flavour)
{
    auto& f = fixture();
    const auto group = f.manager->getCurrentGroup();
    for (auto _ : state) {
        if (!OrvexCurveCsvFile::exportGroup(*group, f.path(flavour), flavour))
            state.SkipWithError("export failed");
    }
    setBytes(state, flavour);
}
BENCHMARK_CAPTURE(BM_CsvExport, comma, Flavour::Comma)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_CsvExport, blank, Flavour::Blank)->Unit(benchmark::kMillisecond);

// The same text made the plain way: QString::arg per cell, lines through a
// QTextStream on a QFile.
void BM_QFileArgWrite(benchmark::State& state, Flavour flavour)
{
    auto& f = fixture();
    const auto curves = f.manager->getCurrentGroup()->getAllCurves(true);
    const QString separator = flavour == Flavour::Comma ? QStringLiteral(",") : QStringLiteral(" ");
    const QString path = f.dir.filePath(QStringLiteral("plain.csv"));
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        QTextStream out(&file);
        for (const char* header : {"#Title", "#Suffix", "#X-Unit", "#Y-Unit"}) {
            out << header;
            for (const auto& curve : curves)
                out << separator << QString::fromStdString(curve->title());
            out << '\n';
        }
        const auto& x = curves.front()->xData();
        for (std::size_t i = 0; i < x.size(); ++i) {
            QString line = QString("%1").arg(x[i], 0, 'g');
            for (const auto& curve : curves)
                line += separator + QString("%1").arg(curve->yData()[i], 0, 'g');
            out << line << '\n';
        }
    }
    setBytes(state, flavour);
}
BENCHMARK_CAPTURE(BM_QFileArgWrite, comma, Flavour::Comma)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_QFileArgWrite, blank, Flavour::Blank)->Unit(benchmark::kMillisecond);

// Writing the finished bytes only: the floor no formatting can reach.
void BM_QFileWriteSameBytes(benchmark::State& state, Flavour flavour)
{
    auto& f = fixture();
    const QString path = f.dir.filePath(QStringLiteral("bytes.csv"));
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        benchmark::DoNotOptimize(file.write(f.bytes[flavour]));
    }
    setBytes(state, flavour);
}
BENCHMARK_CAPTURE(BM_QFileWriteSameBytes, comma, Flavour::Comma)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    // The pairs the file formats are held to.
    std::vector<RatioReporter::Ratio> ratios;
    for (const std::string flavour : {"/comma", "/blank"}) {
        ratios.push_back({"BM_CsvImport" + flavour, "BM_QFileSplitToDouble" + flavour, "at most 1.5"});
        ratios.push_back({"BM_CsvExport" + flavour, "BM_QFileArgWrite" + flavour, "at most 1.5"});
    }
    ratios.push_back({"BM_CsvImport/comma", "BM_PythonCsvModule", "below 1"});
    ratios.push_back({"BM_CsvExport/comma", "BM_QFileWriteSameBytes/comma", "the bare write, for scale"});
    RatioReporter reporter(std::move(ratios));
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
