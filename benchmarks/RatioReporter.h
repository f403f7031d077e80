#pragma once

// The console report of Google Benchmark, followed by "a / b" for the pairs
// of runs a benchmark program is held to (adjusted real times).

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    struct Ratio
    {
        std::string run; ///< function name, such as "BM_CsvImport/comma"
        std::string peer;
        std::string goal; ///< what the ratio should be, for the reader
    };

    explicit RatioReporter(std::vector<Ratio> ratios)
        : m_ratios(std::move(ratios))
    {
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (!run.error_occurred && run.run_type == Run::RT_Iteration)
                m_times[run.run_name.function_name] = run.GetAdjustedRealTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        std::printf("\nratios (lower is better):\n");
        for (const Ratio& ratio : m_ratios) {
            const auto a = m_times.find(ratio.run);
            const auto b = m_times.find(ratio.peer);
            if (a == m_times.end() || b == m_times.end() || b->second <= 0)
                continue;
            std::printf("  %-32s / %-32s %9.3f  (%s)\n", ratio.run.c_str(), ratio.peer.c_str(), a->second / b->second,
                        ratio.goal.c_str());
        }
    }

private:
    std::vector<Ratio> m_ratios;
    std::map<std::string, double> m_times;
};
