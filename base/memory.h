// SPDX-License-Identifier: Apache-2.0
// How much memory the computer has. An initramfs overcommits: the kernel kills the program instead of
// refusing memory, so a derivation must be weighed before it begins.
#pragma once

#include <cstdint>

namespace base {

// In KiB; 0 when the kernel does not say.
std::uint64_t TotalMemory();
std::uint64_t AvailableMemory();

} // namespace base
