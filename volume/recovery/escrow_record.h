// SPDX-License-Identifier: Apache-2.0
// A record of the administrator's escrow: one line of JSON that keeps a volume's recovery secret, sealed so
// that only the administrator's key opens it. What stands outside the seal serves searching alone.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "volume/recovery/enrolment.h"

namespace recovery {

struct EscrowSecret
{
    std::string machine; // UTF-8, the name that the computer shows
    Identity identity;
    RecoverySecret secret;
};

// The line as it was read; nothing in it is to be trusted.
struct EscrowRecord
{
    std::string machine;
    std::string uuid;
    std::string record;      // hexadecimal
    std::string fingerprint; // of the key that it is sealed for
    std::string sealed;      // base-64
};

inline constexpr std::size_t kMaxMachineBytes = 256;

// Without the end of the line. `machine` must be valid UTF-8.
std::string SealRecord(const EscrowSecret &secret, const PublicKey &administrator);
// Nothing when the line is no record.
std::optional<EscrowRecord> ParseRecord(std::string_view line);
// Nothing when the key does not open it, or what it says outside is not what was sealed: then the line was
// put together from others.
std::optional<EscrowSecret> UnsealRecord(const EscrowRecord &record, const SecretKey &administrator);

} // namespace recovery
