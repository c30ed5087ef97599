// SPDX-License-Identifier: Apache-2.0
// What the probe inside a measured program tells the starter, over a pipe.
#pragma once

#include <cstdint>

namespace bench {

// Standard output: a pipe. The one descriptor that reaches every process of a measured program.
inline constexpr int kReportDescriptor = 1;

struct PaintReport
{
    // CLOCK_MONOTONIC, when the picture had been handed to the window system.
    std::int64_t paintedNs;
    // The highest use of physical memory until then.
    std::int64_t peakKib;
};

} // namespace bench
