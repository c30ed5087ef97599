// SPDX-License-Identifier: Apache-2.0
// The performance counter: the kernel's monotonic clock.
#include "pbe/counter.h"

#include <ctime>

std::uint64_t PbeGetPerformanceCounterValue()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000U + static_cast<std::uint64_t>(now.tv_nsec);
}
