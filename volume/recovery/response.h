// SPDX-License-Identifier: Apache-2.0
// The response: what the administrator reads out and the person types. Two strings of 17 characters that
// carry the recovery's secret, masked for the one computer that made the challenge, and a tag over the user
// whose password may be set.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "base/code_string.h"
#include "volume/recovery/enrolment.h"
#include "volume/luks/user.h"

namespace recovery {

inline constexpr std::size_t kResponseLines = 2;
using base::kResponseDigits;

using ResponseLines = std::array<base::Secret, kResponseLines>;

// At the desk. Nothing when the challenge's key is one that gives the secret away.
std::optional<ResponseLines> MakeResponse(const SecretKey &administrator, const Identity &identity,
                                          const PublicKey &ephemeral, const RecoverySecret &secret,
                                          const volume::UserName &name);

// `row` counts from 0; `text` is normalised already.
bool IsResponseLine(std::string_view text, std::size_t row);

// At the computer.
class Response
{
public:
    // `ephemeral` is the secret half of the challenge. Nothing when a line is wrong or the administrator's
    // key is unusable; any other response opens, and only the keyslot tells whether it was right.
    static std::optional<Response> Open(const SecretKey &ephemeral, const Enrolment &enrolment,
                                        const ResponseLines &lines);

    const RecoverySecret &Secret() const { return m_secret; }
    // The one of `users` that the administrator named, if any. A name without a domain also means the only
    // user of that name, whatever the domain.
    std::optional<volume::UserName> FindUser(std::span<const volume::User> users) const;

private:
    Response() = default;

    bool Names(const volume::UserName &name) const;

    RecoverySecret m_secret;
    Bytes<16> m_masked{};
    Bytes<4> m_tag{};
    SecretKey m_tagKey;
};

} // namespace recovery
