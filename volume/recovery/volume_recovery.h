// SPDX-License-Identifier: Apache-2.0
// The recovery of a volume: its keyslot and its object, set up, renewed, used. What a loss of power leaves
// half done is undone by FinishPending.
#pragma once

#include <functional>
#include <optional>

#include "volume/recovery/enrolment.h"
#include "volume/luks/header.h"

namespace recovery {

struct Found
{
    Enrolment enrolment; // has a keyslot that opens the volume's key
    int object;
};

// Nothing when the volume has no recovery, or what is left of one is of no use.
std::optional<Found> Find(const volume::Header &header);

// Where the secret is kept from now on; it counts as kept when the call returns. An exception undoes all.
using Keep = std::function<void(const Identity &, const RecoverySecret &)>;

// A new secret, keyslot and record, in place of the former ones if there were any. `volumeKey` is from
// Header::Authorise. OldPasswordStays when all is done but the former secret still opens the volume.
[[nodiscard]] volume::Error SetUp(volume::Header &header, const base::Secret &volumeKey,
                                  const PublicKey &administrator, const Keep &keep);

// Somebody has seen the secret: it is time for another. Nothing happens when it has been renewed since.
[[nodiscard]] volume::Error MarkUsed(volume::Header &header, const Identity &identity);

// To be called before the volume is changed; writes nothing when there is nothing to do. What another program
// is in the middle of is no loss of power: it waits.
[[nodiscard]] volume::Error FinishPending(volume::Header &header);

} // namespace recovery
