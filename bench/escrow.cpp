// SPDX-License-Identifier: Apache-2.0
// The search in the escrow of a whole organisation: first when the index has to be made, then with it.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "admin/escrow_search.h"
#include "bench/table_reporter.h"

namespace {

namespace fs = std::filesystem;

constexpr int kRecords = 1'000'000;

std::string s_escrow;

std::string MachineName(int number)
{
    char name[32];
    std::snprintf(name, sizeof name, "Office-PC-%07d", number);
    return name;
}

// One record under many names: nothing is unsealed here.
void WriteEscrow()
{
    const recovery::PublicKey administrator = recovery::PublicKeyOf(recovery::SecretKey());
    const std::string line = recovery::SealRecord({MachineName(0), {}, {}}, administrator);
    const std::size_t place = line.find(MachineName(0));
    std::ofstream file(s_escrow, std::ios::binary);
    for (int i = 0; i < kRecords; ++i) {
        // In no order, as computers come and go.
        const std::string name = MachineName(static_cast<int>(i * 7919LL % kRecords));
        file << line.substr(0, place) << name << line.substr(place + name.size()) << '\n';
    }
}

void Search(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        if (admin::FindRecords(s_escrow, "office-pc-0424242").size() != 1)
            state.SkipWithError("the record is not found");
    }
}

void FirstSearch(benchmark::State &state)
{
    fs::remove(s_escrow + ".index");
    Search(state);
}

void LaterSearch(benchmark::State &state)
{
    Search(state);
    state.SetLabel("under 1000 ms");
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    const fs::path directory = fs::temp_directory_path() / ("pba_escrow." + std::to_string(getpid()));
    fs::create_directory(directory);
    s_escrow = directory / "escrow";
    WriteEscrow();
    benchmark::RegisterBenchmark("Search of 1,000,000 escrow records, first", FirstSearch)
        ->Unit(benchmark::kMillisecond)
        ->Repetitions(3)
        ->Iterations(1);
    benchmark::RegisterBenchmark("Search of 1,000,000 escrow records, later", LaterSearch)
        ->Unit(benchmark::kMillisecond)
        ->Repetitions(15)
        ->Iterations(1);
    bench::TableReporter reporter("-");
    const bool ran = benchmark::RunSpecifiedBenchmarks(&reporter) > 0;
    fs::remove_all(directory);
    return ran ? 0 : 1;
}
