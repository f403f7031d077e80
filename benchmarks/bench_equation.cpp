// Checking a 200-character expression with units as the equation box does
// on every keystroke, against reading a number text of the same length with
// QString::toDouble and against UDUNITS' own ut_parse of the expression's
// units. Steady state: everything loaded and warm. Cold: the first call in
// a fresh process (this program run again with --cold-probe), which for the
// checker and UDUNITS includes reading the unit database.

#include "RatioReporter.h"

#include <Kernel/DM/Expression.h>
#include <Kernel/DM/ParserContext.h>
#include <Kernel/Quantity.h>
#include <Kernel/Unit.h>

#include <benchmark/benchmark.h>
#include <udunits2.h>

#include <QString>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

const std::string Expression = "2*L + 3 mm + (4.5 mm * n^2 - 1.5e-3 m / 2) + 0.25 in - 12 um * (k + 1) + 3e8 m/s "
                               "/ (2.4 GHz * 4) + W/2 + 0.8 mil * n - (L - W) / 3 + 1.6 mm * 2^k + 35 um + 0.5 cm "
                               "* (n - k)/(n + k) - 0.12 mm * (L/W)^2";
// The unit names of Expression, each occurrence: what UDUNITS alone parses.
const std::vector<const char*> Units{"mm", "mm", "m", "in", "um", "m", "s", "GHz", "mil", "mm", "um", "cm", "mm"};

QString numberText()
{
    QString text = QStringLiteral("3.");
    while (text.size() < int(Expression.size()))
        text += QLatin1Char(char('0' + text.size() % 10));
    return text;
}

const QString Number200 = numberText();
const QString NumberTypical = QStringLiteral("12.375");

/// The box's view of a document: L and W lengths, n and k plain numbers.
struct Checker
{
    Kernel::DM::ParserContext context;
    const Kernel::Unit* millimetre = Kernel::Unit::fromSymbol("mm");

    Checker()
    {
        using Kernel::Quantity;
        context.declare({"L", Quantity::get(Quantity::Kind::Length)});
        context.declare({"W", Quantity::get(Quantity::Kind::Length)});
        context.declare({"n", Quantity::NoneUnitQuantity()});
        context.declare({"k", Quantity::NoneUnitQuantity()});
    }

    bool check() const { return Kernel::DM::isExpressionValid(context, Expression, millimetre); }
};

/// Parses every unit of Expression; false when UDUNITS knows one not.
bool parseUnits(ut_system* system)
{
    bool all = true;
    for (const char* unit : Units) {
        ut_unit* parsed = ut_parse(system, unit, UT_UTF8);
        all = all && parsed;
        ut_free(parsed);
    }
    return all;
}

void BM_CheckExpression(benchmark::State& state)
{
    const Checker checker;
    bool valid = false;
    for (auto _ : state)
        benchmark::DoNotOptimize(valid = checker.check());
    if (!valid || Expression.size() != 200)
        state.SkipWithError("the expression must be 200 characters and valid");
}
BENCHMARK(BM_CheckExpression)->Unit(benchmark::kMicrosecond);

void BM_QStringToDouble(benchmark::State& state, const QString& text)
{
    bool ok = false;
    for (auto _ : state)
        benchmark::DoNotOptimize(text.toDouble(&ok));
    if (!ok)
        state.SkipWithError("not a number");
}
BENCHMARK_CAPTURE(BM_QStringToDouble, 200chars, Number200)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_QStringToDouble, typical, NumberTypical)->Unit(benchmark::kMicrosecond);

void BM_UtParseUnits(benchmark::State& state)
{
    ut_set_error_message_handler(ut_ignore);
    ut_system* system = ut_read_xml(nullptr);
    bool all = false;
    for (auto _ : state)
        benchmark::DoNotOptimize(all = parseUnits(system));
    if (!all)
        state.SkipWithError("UDUNITS does not know every unit");
    ut_free_system(system);
}
BENCHMARK(BM_UtParseUnits)->Unit(benchmark::kMicrosecond);

// --- cold: the first call of a fresh process --------------------------------

std::string g_program;

/// Runs this program with --cold-probe=@p probe; its answer is seconds.
void runProbe(benchmark::State& state, const char* probe)
{
    for (auto _ : state) {
        const std::string command = "'" + g_program + "' --cold-probe=" + probe;
        FILE* pipe = popen(command.c_str(), "r");
        double seconds = -1;
        if (!pipe || std::fscanf(pipe, "%lf", &seconds) != 1 || pclose(pipe) != 0 || seconds < 0) {
            state.SkipWithError("the probe failed");
            return;
        }
        state.SetIterationTime(seconds);
    }
}

void BM_Cold_CheckExpression(benchmark::State& state)
{
    runProbe(state, "check");
}
void BM_Cold_QStringToDouble(benchmark::State& state)
{
    runProbe(state, "todouble");
}
void BM_Cold_UtParseUnits(benchmark::State& state)
{
    runProbe(state, "utparse");
}
BENCHMARK(BM_Cold_CheckExpression)->UseManualTime()->Iterations(10)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Cold_QStringToDouble)->UseManualTime()->Iterations(10)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Cold_UtParseUnits)->UseManualTime()->Iterations(10)->Unit(benchmark::kMicrosecond);

/// Times the first use in this process; prints seconds, or fails.
int coldProbe(const std::string& probe)
{
    const Clock::time_point start = Clock::now();
    bool ok = false;
    if (probe == "check") {
        ok = Checker().check();
    } else if (probe == "todouble") {
        Number200.toDouble(&ok);
    } else if (probe == "utparse") {
        ut_set_error_message_handler(ut_ignore);
        ut_system* system = ut_read_xml(nullptr);
        ok = system && parseUnits(system);
        ut_free_system(system);
    }
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    if (!ok)
        return 1;
    std::printf("%.9f\n", seconds);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    constexpr const char* Probe = "--cold-probe=";
    if (argc == 2 && std::strncmp(argv[1], Probe, std::strlen(Probe)) == 0)
        return coldProbe(argv[1] + std::strlen(Probe));
    char self[4096] = {};
    if (readlink("/proc/self/exe", self, sizeof self - 1) <= 0)
        return 2;
    g_program = self;
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter({
        {"BM_CheckExpression", "BM_QStringToDouble/200chars", "steady, same length; the check itself must stay under 50 us"},
        {"BM_CheckExpression", "BM_QStringToDouble/typical", "steady, against a typical number field"},
        {"BM_CheckExpression", "BM_UtParseUnits", "steady; below 1: cached lookups beat parsing"},
        {"BM_Cold_CheckExpression", "BM_Cold_QStringToDouble", "cold; the unit database is read once"},
        {"BM_Cold_CheckExpression", "BM_Cold_UtParseUnits", "cold; about 1: both read the database"},
    });
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
