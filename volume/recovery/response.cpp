// SPDX-License-Identifier: Apache-2.0
#include "volume/recovery/response.h"

#include <algorithm>

#include "volume/luks/name_comparison.h"

namespace recovery {
namespace {

constexpr std::size_t kDigits = kResponseLines * kResponseDigits;

int RowNumber(std::size_t row)
{
    return base::kFirstResponseRow + static_cast<int>(row);
}

// What both sides derive from their shared secret.
struct ResponseKeys
{
    RecoverySecret mask;
    SecretKey tagKey;
};

ResponseKeys DeriveKeys(const SecretKey &shared, const Identity &identity, const PublicKey &ephemeral,
                        const PublicKey &administrator)
{
    SecretBytes<64> material;
    KeyedHash(shared.View(), "pba-recovery/1 response", material.View().size())
        .Add(identity.volume)
        .Add(identity.record)
        .Add(ephemeral)
        .Add(administrator)
        .Finish(material.Data());
    ResponseKeys keys;
    const std::size_t maskSize = keys.mask.View().size();
    std::copy_n(material.Data(), maskSize, keys.mask.Data());
    std::copy_n(material.Data() + maskSize, keys.tagKey.View().size(), keys.tagKey.Data());
    return keys;
}

void Mask(ByteView from, ByteView mask, std::uint8_t *to)
{
    for (std::size_t i = 0; i < from.size(); ++i)
        to[i] = from[i] ^ mask[i];
}

Bytes<4> Tag(const SecretKey &tagKey, ByteView masked, const volume::UserName &name)
{
    Bytes<32> digest;
    KeyedHash(tagKey.View(), "pba-recovery/1 tag", digest.size())
        .Add(masked)
        .AddText(volume::FoldName(name.domain))
        .AddText(volume::FoldName(name.user))
        .Finish(digest.data());
    Bytes<4> tag;
    std::copy_n(digest.begin(), tag.size(), tag.begin());
    return tag;
}

} // namespace

std::optional<ResponseLines> MakeResponse(const SecretKey &administrator, const Identity &identity,
                                          const PublicKey &ephemeral, const RecoverySecret &secret,
                                          const volume::UserName &name)
{
    SecretKey shared;
    if (!Agree(administrator, ephemeral, &shared))
        return std::nullopt;
    const ResponseKeys keys = DeriveKeys(shared, identity, ephemeral, PublicKeyOf(administrator));
    Bytes<16> masked;
    Mask(secret.View(), keys.mask.View(), masked.data());
    base::CodeWriter code(kDigits);
    for (std::uint8_t byte : masked)
        code.Put(byte, 8);
    for (std::uint8_t byte : Tag(keys.tagKey, masked, name))
        code.Put(byte, 8);
    ResponseLines lines;
    for (std::size_t row = 0; row < lines.size(); ++row)
        lines[row] = code.Row(row * kResponseDigits, kResponseDigits, RowNumber(row));
    return lines;
}

bool IsResponseLine(std::string_view text, std::size_t row)
{
    return base::IsCodeString(text, kResponseDigits, RowNumber(row));
}

std::optional<Response> Response::Open(const SecretKey &ephemeral, const Enrolment &enrolment,
                                       const ResponseLines &lines)
{
    base::CodeReader code(kDigits);
    for (std::size_t row = 0; row < lines.size(); ++row) {
        if (!code.AddRow(lines[row].View(), kResponseDigits, RowNumber(row)))
            return std::nullopt;
    }
    SecretKey shared;
    if (!Agree(ephemeral, enrolment.administrator, &shared))
        return std::nullopt;
    ResponseKeys keys =
        DeriveKeys(shared, enrolment.identity, PublicKeyOf(ephemeral), enrolment.administrator);
    Response response;
    for (std::uint8_t &byte : response.m_masked)
        byte = static_cast<std::uint8_t>(code.Take(8));
    for (std::uint8_t &byte : response.m_tag)
        byte = static_cast<std::uint8_t>(code.Take(8));
    Mask(response.m_masked, keys.mask.View(), response.m_secret.Data());
    response.m_tagKey = std::move(keys.tagKey);
    return response;
}

bool Response::Names(const volume::UserName &name) const
{
    return AreEqual(m_tag, Tag(m_tagKey, m_masked, name));
}

std::optional<volume::UserName> Response::FindUser(std::span<const volume::User> users) const
{
    for (const volume::User &user : users) {
        if (Names(user.name))
            return user.name;
    }
    for (const volume::User &user : users) {
        const volume::UserName bare{{}, user.name.user};
        const auto namesakes = std::count_if(users.begin(), users.end(), [&](const volume::User &other) {
            return volume::UserName{{}, other.name.user} == bare;
        });
        if (namesakes == 1 && Names(bare))
            return user.name;
    }
    return std::nullopt;
}

} // namespace recovery
