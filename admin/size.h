// SPDX-License-Identifier: Apache-2.0
// Sizes on the command line.
#pragma once

#include <cstdint>
#include <string>

namespace admin {

// Bytes, or a number with K, M or G behind it (powers of 1024). Throws Failure.
std::uint64_t ParseSize(const std::string &text);

} // namespace admin
