// SPDX-License-Identifier: Apache-2.0
// What a volume knows of its recovery: a LUKS2 token object of our own type in the header, beside the keyslot
// that the recovery's secret opens. docs/volume-format.md describes the object.
//
// The header is not authenticated. The administrator's key in it serves only to read a response, for which a
// planted one is of no use; a new secret is never sealed for it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "volume/recovery/crypto.h"

namespace recovery {

inline constexpr char kObjectType[] = "pba-recovery";

// The secret that opens the recovery's keyslot.
using RecoverySecret = SecretBytes<16>;

// Which secret of which volume. The binding key tells the volume's challenges from everybody else's.
struct Identity
{
    Bytes<16> volume{};
    Bytes<16> record{};
    Bytes<32> binding{};

    bool operator==(const Identity &) const = default;
};

struct Enrolment
{
    Identity identity;
    PublicKey administrator{};
    std::vector<int> keyslots;  // the first is the recovery's; others await their removal
    bool used = false;          // somebody has recovered with this secret
    std::optional<int> pending; // the keyslot that a renewal under way is about to add
};

// A UUID with its hyphens, as headers have it.
std::optional<Bytes<16>> ParseUuid(std::string_view text);
std::string FormatUuid(const Bytes<16> &uuid);

// Nothing when `json` is no such object of the volume `uuid`. Any text may come here.
std::optional<Enrolment> DecodeEnrolment(std::string_view json, const Bytes<16> &uuid);
std::string EncodeEnrolment(const Enrolment &enrolment);

// Names a key where people compare and files are searched: 32 hexadecimal digits.
std::string Fingerprint(const PublicKey &key);

// The keyslot's passphrase: hexadecimal digits, so that it can be typed wherever a passphrase is asked for.
base::Secret PassphraseOf(const RecoverySecret &secret);

} // namespace recovery
