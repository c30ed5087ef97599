// SPDX-License-Identifier: Apache-2.0
#include "bench/table_reporter.h"

#include <cstdio>

namespace bench {

TableReporter::TableReporter(const char *platform)
    : m_platform(platform)
{
}

void TableReporter::ReportRuns(const std::vector<Run> &runs)
{
    for (const Run &run : runs) {
        if (run.error_occurred)
            std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
        else if (run.aggregate_name == "median")
            PrintRow(run);
    }
}

void TableReporter::PrintRow(const Run &run) const
{
    std::printf("| %s, %s | %.2f %s", run.run_name.function_name.c_str(), m_platform,
                run.GetAdjustedRealTime(), benchmark::GetTimeUnitString(run.time_unit));
    if (const auto allocations = run.counters.find(kAllocations); allocations != run.counters.end())
        std::printf(", %g allocations", static_cast<double>(allocations->second));
    std::printf(" | | | | %s |\n", run.report_label.c_str());
    std::fflush(stdout);
}

} // namespace bench
