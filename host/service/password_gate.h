// SPDX-License-Identifier: Apache-2.0
// What a password may do here, decided and counted: nothing of it is shown.
#pragma once

#include "host/service/login_throttle.h"
#include "host/service/unlock_session.h"

namespace host {

class PasswordGate
{
public:
    PasswordGate(UnlockSession &unlockSession, LoginThrottle &throttle)
        : m_unlockSession(unlockSession)
        , m_throttle(throttle)
    {
    }

    struct Answer
    {
        volume::Error error;
        std::uint32_t secondsToWait = 0; // above 0 the password was not tried
    };
    // On what the header holds now: somebody else may have set a password or a policy.
    Answer Try(const volume::UserName &name, const base::Secret &password);
    // For whoever was let in last; a success ends the failures before it. See UnlockSession::ReplacePassword.
    volume::Error Replace(const base::Secret &password);

private:
    UnlockSession &m_unlockSession;
    LoginThrottle &m_throttle;
};

} // namespace host
