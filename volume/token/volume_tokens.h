// SPDX-License-Identifier: Apache-2.0
// The tokens of a volume: for each a keyslot with its enrolment, and beside it an object of our own that
// names the person, which the enrolment of the standard tool does not.
#pragma once

#include "volume/luks/user.h"
#include "volume/token/enrolment.h"
#include "volume/token/wrap.h"

namespace token {

inline constexpr char kOwnerType[] = "pba-token";

struct VolumeToken
{
    Enrolment enrolment;
    volume::UserName owner; // empty where the standard tool enrolled it
};

// In the order of their objects in the header, also those that let nobody in.
std::vector<VolumeToken> TokensOf(const volume::Header &header);

// A user that the volume does not know becomes one without a password. `*keyslot` is the new one. When it
// fails, everything is as it was, or will be when FinishPending can write.
[[nodiscard]] volume::Error AddToken(volume::Header &header, const base::Secret &volumeKey,
                                     const Wrapped &wrapped, const volume::UserName &owner, int *keyslot);

// Takes a token's keyslot away, with its objects, and with its owner when that one has no other way in.
[[nodiscard]] volume::Error RemoveToken(volume::Header &header, int keyslot);

// Takes a user away with all tokens and the password. What a loss of power leaves of it FinishPending and
// then the volume's own finish; the tokens go first, so that none still logs somebody on.
[[nodiscard]] volume::Error RemoveUser(volume::Header &header, const volume::UserName &name);

// Finishes or undoes what a loss of power interrupted. Writes nothing when there is nothing to do.
[[nodiscard]] volume::Error FinishPending(volume::Header &header);

} // namespace token
