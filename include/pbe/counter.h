// SPDX-License-Identifier: Apache-2.0
// The platform's performance counter. Free of Qt.
#pragma once

#include <cstdint>

#include "pbe/export.h"

extern "C" {

// A counter that never goes back, in nanoseconds since an arbitrary point.
PBE_EXPORT std::uint64_t PbeGetPerformanceCounterValue();

} // extern "C"
