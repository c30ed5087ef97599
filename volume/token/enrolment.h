// SPDX-License-Identifier: Apache-2.0
// What a volume keeps of a token that opens it: a LUKS2 token object as the standard tool writes it, which
// docs/volume-format.md describes. The passphrase of its keyslots is the base-64 text of a secret that only
// the token can bring back from what is stored.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "volume/token/session.h"
#include "volume/luks/header.h"

namespace token {

inline constexpr char kEnrolmentType[] = "systemd-pkcs11";

struct Enrolment
{
    std::string uri;
    std::string key; // bytes: encrypted for an RSA key, or a point for an elliptic-curve key
    std::vector<int> keyslots;
};

// Nothing when the object is not of that shape. The header is not trusted: any text may stand in it.
std::optional<Enrolment> DecodeEnrolment(const volume::Object &object);
std::string EncodeEnrolment(const Enrolment &enrolment);
// Those of the volume whose keyslots open it; others cannot let anybody in.
std::vector<Enrolment> EnrolmentsOf(const volume::Header &header);

// Whether a passphrase opens the volume.
using Opens = std::function<bool(const base::Secret &passphrase)>;

// Gives `opens` what each key of the token makes of the enrolment, the likeliest first, until one opens: a
// key that is not the right one need not fail. NoKey when none does.
[[nodiscard]] Error Unwrap(Session &session, const Enrolment &enrolment, const Opens &opens);

} // namespace token
