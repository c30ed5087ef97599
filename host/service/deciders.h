// SPDX-License-Identifier: Apache-2.0
// What decides, whichever screen asks.
#pragma once

#include <memory>

#include "host/service/clock.h"
#include "host/service/command_line.h"
#include "host/service/login_throttle.h"
#include "host/service/state_store.h"
#include "host/service/unlock_session.h"

namespace host {

// Members in the order in which they depend on each other.
struct Deciders
{
    // The header must outlive this object.
    Deciders(const CommandLine &line, volume::Header &header);

    Clock clock;
    UnlockSession unlockSession;
    std::unique_ptr<StateStore> store;
    LoginThrottle throttle;
    bool autologonAllowed;
};

} // namespace host
