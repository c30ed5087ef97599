// SPDX-License-Identifier: Apache-2.0
// What a loss of power left half done on a volume, to be finished or undone at each start that may write.
#pragma once

#include "volume/recovery/volume_recovery.h"
#include "volume/token/volume_tokens.h"
#include "volume/luks/volume.h"

// Writes nothing when there is nothing to do. A user who is being removed goes after the tokens.
[[nodiscard]] inline volume::Error FinishInterruptedChanges(volume::Volume &volume)
{
    volume::Error error = token::FinishPending(volume);
    if (error == volume::Error::None)
        error = volume.FinishPending();
    return error == volume::Error::None ? recovery::FinishPending(volume) : error;
}
