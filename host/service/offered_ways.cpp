// SPDX-License-Identifier: Apache-2.0
#include "host/service/offered_ways.h"

#include <algorithm>

#include "volume/luks/users.h"
#include "volume/recovery/volume_recovery.h"

namespace host {

// Whoever lost the password, be it with the power in the middle of a change, resets it from that page.
bool OffersPasswords(UnlockSession &unlockSession)
{
    if (!unlockSession.TakesPasswords())
        return false;
    const std::vector<volume::User> users = volume::UsersOf(unlockSession.GetHeader());
    return std::any_of(users.begin(), users.end(),
                       [](const volume::User &user) { return !user.keyslots.empty(); }) ||
           recovery::Find(unlockSession.GetHeader()).has_value();
}

} // namespace host
