// SPDX-License-Identifier: Apache-2.0
// What the program ends with; scripts and the boot image rely on it.
#pragma once

namespace host {

inline constexpr int kExitStarted = 0;
inline constexpr int kExitViewFailed = 1;
inline constexpr int kExitUsage = 2;
inline constexpr int kExitSignal = 3;
inline constexpr int kExitTestBootEnded = 4;
inline constexpr int kExitNoAccess = 5;

} // namespace host
