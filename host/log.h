// SPDX-License-Identifier: Apache-2.0
// The host's lines in the platform's log. Never give it what a person typed.
#pragma once

#include <cstdint>
#include <string>

namespace host {

inline constexpr std::uint32_t kLogErrors = 300;
inline constexpr std::uint32_t kLogCalls = 700;

void Log(std::uint32_t severity, const std::string &text);

} // namespace host
