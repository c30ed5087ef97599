// SPDX-License-Identifier: Apache-2.0
// Prints the medians of benchmarks as rows of the table that ./bench.sh puts together.
#pragma once

#include <benchmark/benchmark.h>

namespace bench {

// Counted by a benchmark, shown beside its time.
inline constexpr char kAllocations[] = "allocations";

// A benchmark's name is the row's, its label the target.
class TableReporter : public benchmark::BenchmarkReporter
{
public:
    explicit TableReporter(const char *platform);

    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override;

private:
    void PrintRow(const Run &run) const;

    const char *m_platform;
};

} // namespace bench
