// SPDX-License-Identifier: Apache-2.0
// What a volume's administrator asks of its users' passwords and logins: a LUKS2 token object of our own type
// in the header. The header is not authenticated; a policy guides honest people, it holds nobody back who
// writes to the disk. docs/volume-format.md describes the object.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/secret.h"
#include "volume/luks/error.h"
#include "volume/luks/user.h"

namespace volume {

class Header;

inline constexpr char kPolicyObjectType[] = "pba-policy";
inline constexpr std::uint32_t kMaxMinimumLength = 127; // the fields of the view take no more
inline constexpr std::uint32_t kMaxExpiryDays = 3650;
inline constexpr std::uint32_t kMaxFreeAttempts = 100;
inline constexpr std::uint32_t kMaxDelaySeconds = 3600; // nobody is to be locked out for long

// The defaults hold for a volume without a policy.
struct Policy
{
    std::uint32_t minimumLength = 8; // of a new password, in UTF-16 code units as the view counts them
    bool notOldPassword = true;      // a new password must differ from the old one
    std::uint32_t expiryDays = 0;    // 0: passwords do not expire
    bool autologonAllowed = true;
    std::uint32_t freeAttempts = 5;  // failed logins that cost no delay
    std::uint32_t delaySeconds = 30; // after each further one; 0: none ever
    // When the administrator last declared what date it is, in seconds since 1970; 0: never. Later dates that
    // a host had seen before count no longer.
    std::int64_t clockReset = 0;

    bool operator==(const Policy &) const = default;
};

// Nothing when `json` is no policy object. The header is not trusted: a member that is missing or out of
// range has its default.
std::optional<Policy> DecodePolicy(std::string_view json);
std::string EncodePolicy(const Policy &policy);

Policy PolicyOf(const Header &header);
[[nodiscard]] Error SetPolicy(Header &header, const Policy &policy);

// Whether a new password has the minimum length.
bool IsLongEnough(const Policy &policy, const base::Secret &password);

// Whether the user must choose a new password at `now`, in seconds since 1970. One whose last change is not
// known must.
bool HasExpired(const Policy &policy, const User &user, std::int64_t now);

} // namespace volume
