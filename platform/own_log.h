// SPDX-License-Identifier: Apache-2.0
// The platform's own lines in the log.
#pragma once

#include <cstdint>
#include <string>

#include "pbe/log.h"

namespace pbe {

inline constexpr std::uint32_t kErrors = 300;
inline constexpr std::uint32_t kInformation = 700;

inline void LogOwn(std::uint32_t severity, const std::string &line)
{
    constexpr std::uint32_t kNamedSeverity = 5;
    PbeLogMessage(severity, kNamedSeverity, "PBE     ", (line + "\r\n").c_str());
}

} // namespace pbe
