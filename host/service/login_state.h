// SPDX-License-Identifier: Apache-2.0
// What the host remembers from one start to the next: failed logins, and who logged on last.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "volume/luks/user.h"

namespace host {

inline constexpr char kStateObjectType[] = "pba-state";

struct LoginState
{
    std::uint32_t failures = 0;   // logins in a row that did not open the volume
    std::int64_t lastFailure = 0; // in seconds since 1970, never negative
    std::int64_t seen = 0;        // the newest date so far
    std::int64_t clockReset = 0;  // that of the policy, as far as it was obeyed
    // With an empty user where user names are not to be remembered.
    std::optional<volume::UserName> lastLogin{};
};

// A LUKS2 token object; in a file it looks the same. Nothing is trusted in reading: what is missing or out of
// range has its default, and what is no state at all is nothing.
std::optional<LoginState> DecodeLoginState(std::string_view json);
std::string EncodeLoginState(const LoginState &state);

} // namespace host
