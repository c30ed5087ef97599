// SPDX-License-Identifier: Apache-2.0
#include "volume/recovery/challenge.h"

#include <algorithm>

namespace recovery {
namespace {

constexpr std::uint32_t kVersion = 1;
constexpr int kVersionBits = 4;
constexpr std::size_t kDigits = kChallengeStrings * kChallengeDigits;

int RowNumber(std::size_t row)
{
    return base::kFirstChallengeRow + static_cast<int>(row);
}

template <std::size_t Size>
void TakeBytes(base::CodeReader &code, Bytes<Size> &bytes)
{
    for (std::uint8_t &byte : bytes)
        byte = static_cast<std::uint8_t>(code.Take(8));
}

} // namespace

SecretKey MakeEphemeral(ByteView entropy)
{
    SecretKey seed;
    Randomise({seed.Data(), seed.View().size()});
    SecretKey ephemeral;
    KeyedHash(seed.View(), "pba-recovery/1 ephemeral", ephemeral.View().size())
        .Add(entropy)
        .Finish(ephemeral.Data());
    return ephemeral;
}

Challenge MakeChallenge(const Identity &identity, const PublicKey &ephemeral)
{
    Bytes<32> digest;
    KeyedHash(identity.binding, "pba-recovery/1 challenge", digest.size())
        .Add(identity.volume)
        .Add(identity.record)
        .Add(ephemeral)
        .Finish(digest.data());
    Challenge challenge{ephemeral, {}};
    std::copy_n(digest.begin(), challenge.check.size(), challenge.check.begin());
    return challenge;
}

bool BelongsTo(const Challenge &challenge, const Identity &identity)
{
    return AreEqual(challenge.check, MakeChallenge(identity, challenge.ephemeral).check);
}

ChallengeStrings EncodeChallenge(const Challenge &challenge)
{
    base::CodeWriter code(kDigits);
    code.Put(kVersion, kVersionBits);
    for (std::uint8_t byte : challenge.ephemeral)
        code.Put(byte, 8);
    for (std::uint8_t byte : challenge.check)
        code.Put(byte, 8);
    ChallengeStrings strings;
    for (std::size_t row = 0; row < strings.size(); ++row)
        strings[row] = code.Row(row * kChallengeDigits, kChallengeDigits, RowNumber(row)).View();
    return strings;
}

bool IsChallengeString(std::string_view text, std::size_t row)
{
    return base::IsCodeString(text, kChallengeDigits, RowNumber(row));
}

std::optional<Challenge> DecodeChallenge(const ChallengeStrings &strings)
{
    base::CodeReader code(kDigits);
    for (std::size_t row = 0; row < strings.size(); ++row) {
        if (!code.AddRow(strings[row], kChallengeDigits, RowNumber(row)))
            return std::nullopt;
    }
    if (code.Take(kVersionBits) != kVersion)
        return std::nullopt;
    Challenge challenge;
    TakeBytes(code, challenge.ephemeral);
    TakeBytes(code, challenge.check);
    return challenge;
}

} // namespace recovery
