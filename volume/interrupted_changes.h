// SPDX-License-Identifier: Apache-2.0
// What a loss of power left half done on a volume, to be finished or undone at each start that may write.
#pragma once

#include "volume/luks/users.h"
#include "volume/recovery/volume_recovery.h"
#include "volume/token/volume_tokens.h"

// Writes nothing when there is nothing to do. A user who is being removed goes after the tokens.
[[nodiscard]] inline volume::Error FinishInterruptedChanges(volume::Header &header)
{
    volume::Error error = token::FinishPending(header);
    if (error == volume::Error::None)
        error = volume::Users(header).FinishPending();
    return error == volume::Error::None ? recovery::FinishPending(header) : error;
}
