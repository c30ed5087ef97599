// SPDX-License-Identifier: Apache-2.0
// Starts the bare dialog and the view by turns and compares the medians of time and memory until the login
// page has been painted. Other work on the computer meets both alike.
//   bench_start PLATFORM PROBE BARE_DIALOG HOST [HOST'S ARGUMENT...]
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include "bench/paint_report.h"

namespace {

constexpr int kRounds = 31;
constexpr double kTimeTarget = 1.35;
constexpr double kMemoryTarget = 1.25;

[[noreturn]] void Fail(const char *what)
{
    std::fprintf(stderr, "bench_start: %s\n", what);
    std::exit(EXIT_FAILURE);
}

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

struct Samples
{
    std::vector<double> milliseconds;
    std::vector<double> mebibytes;
};

// A program with the environment that loads the probe into it.
class Measured
{
public:
    Measured(char **arguments, const std::string &probe)
        : m_arguments(arguments)
        , m_preload("LD_PRELOAD=" + probe)
    {
        for (char **variable = environ; *variable; ++variable)
            m_environment.push_back(*variable);
        m_environment.push_back(m_preload.data());
        m_environment.push_back(nullptr);
    }

    // The first run warms the file cache.
    void Run(bool counts)
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            Fail("no pipe");
        timespec start{};
        clock_gettime(CLOCK_MONOTONIC, &start);
        const pid_t child = Spawn(ends[1]);
        close(ends[1]);
        bench::PaintReport report{};
        const bool reported = read(ends[0], &report, sizeof report) == sizeof report;
        close(ends[0]);
        waitpid(child, nullptr, 0);
        if (!reported)
            Fail("a program ended before it had painted its login button");
        if (!counts)
            return;
        const double startNs = static_cast<double>(start.tv_sec) * 1e9 + static_cast<double>(start.tv_nsec);
        samples.milliseconds.push_back((static_cast<double>(report.paintedNs) - startNs) / 1e6);
        samples.mebibytes.push_back(static_cast<double>(report.peakKib) / 1024);
    }

    Samples samples;

private:
    pid_t Spawn(int report)
    {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, report, bench::kReportDescriptor);
        pid_t child = 0;
        if (posix_spawn(&child, m_arguments[0], &actions, nullptr, m_arguments, m_environment.data()) != 0)
            Fail("a program cannot be started");
        posix_spawn_file_actions_destroy(&actions);
        return child;
    }

    char **m_arguments;
    std::string m_preload;
    std::vector<char *> m_environment;
};

void PrintRow(const char *what, const char *platform, const char *unit, double view, double bare,
              double target)
{
    std::printf("| %s, %s | %.1f %s | %.1f %s | %.2f | at most %.2f |\n", what, platform, view, unit, bare,
                unit, view / bare, target);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 5)
        Fail("usage: bench_start PLATFORM PROBE BARE_DIALOG HOST [ARGUMENT...]");
    char *bareArguments[] = {argv[3], nullptr};
    Measured bare(bareArguments, argv[2]);
    Measured view(argv + 4, argv[2]);
    for (int round = 0; round <= kRounds; ++round) {
        bare.Run(round > 0);
        view.Run(round > 0);
    }
    PrintRow("Start to the painted login page", argv[1], "ms", Median(view.samples.milliseconds),
             Median(bare.samples.milliseconds), kTimeTarget);
    PrintRow("Peak memory until then", argv[1], "MiB", Median(view.samples.mebibytes),
             Median(bare.samples.mebibytes), kMemoryTarget);
    return EXIT_SUCCESS;
}
