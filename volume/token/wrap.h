// SPDX-License-Identifier: Apache-2.0
// Makes new enrolments, as the standard tool makes them.
#pragma once

#include "volume/token/enrolment.h"

namespace token {

struct Wrapped
{
    base::Secret passphrase; // for a new keyslot
    Enrolment enrolment;     // still without keyslots
};

// A random passphrase that only the RSA key on the session's token brings back. `uri` tells which key, where
// there are several; the enrolment names token and key by everything they tell.
[[nodiscard]] Error Wrap(Session &session, const Token &token, const std::string &uri, Wrapped *wrapped);

} // namespace token
