// What a password may do here, decided and counted: nothing of it is shown.
#pragma once

#include "host/service/login_throttle.h"
#include "host/service/os_start.h"

namespace host {

class PasswordGate
{
public:
    PasswordGate(OsStart &osStart, LoginThrottle &throttle)
        : m_osStart(osStart)
        , m_throttle(throttle)
    {
    }

    struct Answer
    {
        volume::Error error;
        std::uint32_t secondsToWait = 0; // above 0 the password was not tried
    };
    // On what the header holds now: somebody else may have set a password or a policy.
    Answer Try(const volume::UserName &name, const volume::Secret &password);
    // For whoever was let in last; a success ends the failures before it. See OsStart::ReplacePassword.
    volume::Error Replace(const volume::Secret &password);

private:
    OsStart &m_osStart;
    LoginThrottle &m_throttle;
};

} // namespace host
