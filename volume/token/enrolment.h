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

// What the keys of a token make of an enrolment, one key after the other, the likeliest first: a key that is
// not the right one need not fail. Each is used only when it is asked for, since the person may have to
// agree each time.
class Candidates
{
public:
    // The session must outlive this object.
    Candidates(Session &session, Enrolment enrolment);
    // NoKey when there is no further one.
    [[nodiscard]] Error Next(base::Secret *passphrase);

private:
    Session &m_session;
    Enrolment m_enrolment;
    std::vector<CK_OBJECT_HANDLE> m_keys;
    std::size_t m_next = 0;
};

// Whether a passphrase opens the volume.
using Opens = std::function<bool(const base::Secret &passphrase)>;

// Until a candidate opens. NoKey when none does.
[[nodiscard]] Error Unwrap(Session &session, const Enrolment &enrolment, const Opens &opens);

} // namespace token
