// SPDX-License-Identifier: Apache-2.0
#include "volume/recovery/escrow_record.h"

#include <algorithm>

#include <sodium.h>

#include "volume/recovery/json_members.h"

namespace recovery {
namespace {

using nlohmann::json;

constexpr int kVersion = 1;
constexpr std::size_t kFixedBytes = 1 + 16 + 16 + 32 + 16; // version, volume, record, binding key, secret
constexpr std::size_t kMaxLineBytes = 4096;                // twice what a record takes
constexpr std::size_t kMaxSealedBytes = kFixedBytes + kMaxMachineBytes + crypto_box_SEALBYTES;

void Append(base::Secret *to, ByteView bytes)
{
    for (std::uint8_t byte : bytes)
        to->Append(static_cast<char>(byte));
}

void Take(const char **from, std::span<std::uint8_t> bytes)
{
    std::copy_n(*from, bytes.size(), bytes.begin());
    *from += bytes.size();
}

base::Secret Encode(const EscrowSecret &secret)
{
    base::Secret plain(kFixedBytes + secret.machine.size());
    plain.Append(static_cast<char>(kVersion));
    Append(&plain, secret.identity.volume);
    Append(&plain, secret.identity.record);
    Append(&plain, secret.identity.binding);
    Append(&plain, secret.secret.View());
    for (char c : secret.machine)
        plain.Append(c);
    return plain;
}

std::optional<EscrowSecret> Decode(const base::Secret &plain)
{
    if (plain.Size() < kFixedBytes || plain.Data()[0] != kVersion)
        return std::nullopt;
    EscrowSecret secret;
    const char *from = plain.Data() + 1;
    Take(&from, secret.identity.volume);
    Take(&from, secret.identity.record);
    Take(&from, secret.identity.binding);
    Take(&from, {secret.secret.Data(), secret.secret.View().size()});
    secret.machine.assign(from, plain.Data() + plain.Size());
    return secret;
}

} // namespace

std::string SealRecord(const EscrowSecret &secret, const PublicKey &administrator)
{
    Initialise();
    const base::Secret plain = Encode(secret);
    std::string sealed(plain.Size() + crypto_box_SEALBYTES, '\0');
    auto *bytes = reinterpret_cast<std::uint8_t *>(sealed.data());
    crypto_box_seal(bytes, reinterpret_cast<const std::uint8_t *>(plain.Data()), plain.Size(),
                    administrator.data());
    return json{{"version", kVersion},
                {"machine", secret.machine},
                {"uuid", FormatUuid(secret.identity.volume)},
                {"record", ToHex(secret.identity.record)},
                {"fingerprint", Fingerprint(administrator)},
                {"sealed", ToBase64({bytes, sealed.size()})}}
        .dump();
}

std::optional<EscrowRecord> ParseRecord(std::string_view line)
{
    const json object = json::parse(line.size() <= kMaxLineBytes ? line : "", nullptr, false);
    if (!object.is_object() || NumberMember(object, "version") != kVersion)
        return std::nullopt;
    EscrowRecord record{TextMember(object, "machine"), TextMember(object, "uuid"),
                        TextMember(object, "record"), TextMember(object, "fingerprint"),
                        TextMember(object, "sealed")};
    const bool complete =
        !record.machine.empty() && !record.uuid.empty() && !record.record.empty() && !record.sealed.empty();
    return complete ? std::optional(std::move(record)) : std::nullopt;
}

std::optional<EscrowSecret> UnsealRecord(const EscrowRecord &record, const SecretKey &administrator)
{
    Bytes<kMaxSealedBytes> sealed;
    std::size_t size = 0;
    if (sodium_base642bin(sealed.data(), sealed.size(), record.sealed.data(), record.sealed.size(), nullptr,
                          &size, nullptr, sodium_base64_VARIANT_ORIGINAL) != 0 ||
        size < crypto_box_SEALBYTES)
        return std::nullopt;
    base::Secret plain(size - crypto_box_SEALBYTES);
    if (crypto_box_seal_open(reinterpret_cast<std::uint8_t *>(plain.Buffer()), sealed.data(), size,
                             PublicKeyOf(administrator).data(), administrator.View().data()) != 0)
        return std::nullopt;
    plain.SetSize(size - crypto_box_SEALBYTES);
    std::optional<EscrowSecret> secret = Decode(plain);
    const bool whole = secret && secret->machine == record.machine &&
                       FormatUuid(secret->identity.volume) == record.uuid &&
                       ToHex(secret->identity.record) == record.record;
    return whole ? std::move(secret) : std::nullopt;
}

} // namespace recovery
