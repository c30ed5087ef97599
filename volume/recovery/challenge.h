// SPDX-License-Identifier: Apache-2.0
// The challenge: what the computer shows and the person reads out. Four strings of 16 characters that carry
// an ephemeral public key, and a check that only those can make or verify who know the volume's binding key.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "base/code_string.h"
#include "volume/recovery/enrolment.h"

namespace recovery {

inline constexpr std::size_t kChallengeStrings = 4;
inline constexpr std::size_t kChallengeDigits = 15; // and the check digit

using ChallengeStrings = std::array<std::string, kChallengeStrings>;

struct Challenge
{
    PublicKey ephemeral{};
    Bytes<5> check{};
};

// The secret half of a challenge: random, and no weaker should `entropy` be known.
SecretKey MakeEphemeral(ByteView entropy);

Challenge MakeChallenge(const Identity &identity, const PublicKey &ephemeral);
// False for a challenge of another volume or record, and for nearly every one that was misheard.
bool BelongsTo(const Challenge &challenge, const Identity &identity);

ChallengeStrings EncodeChallenge(const Challenge &challenge);
// `row` counts from 0; `text` is normalised already.
bool IsChallengeString(std::string_view text, std::size_t row);
// Nothing when a string is wrong, or all of them are of another version.
std::optional<Challenge> DecodeChallenge(const ChallengeStrings &strings);

} // namespace recovery
