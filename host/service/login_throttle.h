// Slows down guessing: after some failed logins each further one makes the next wait. The host itself never
// waits, it refuses and says for how long.
//
// A login counts as failed before it is tried, so that ending the program in the middle gains nothing. Where
// the memory cannot be written, this program's own counts; nobody is locked out by it.
#pragma once

#include <cstdint>
#include <functional>

#include "host/service/state_store.h"
#include "volume/luks/policy.h"

namespace host {

class LoginThrottle
{
public:
    using Clock = std::function<std::int64_t()>; // in seconds since 1970
    static std::int64_t SystemTime();

    // `store` must outlive this object.
    LoginThrottle(StateStore &store, const volume::Policy &policy, Clock clock = SystemTime);

    // Until the next login may be tried; 0 when it may be now. Asking changes nothing, save that a delay
    // begins anew when the clock was set back.
    std::uint32_t SecondsLeft();
    void BeginAttempt();
    // It was tried for nothing: the person is not to blame.
    void TakeBackAttempt();
    // It opened the volume for this person. The state is written once.
    void EndAttempt(const volume::UserName &name);

    const LoginState &State() const { return m_state; }

private:
    void Store();

    StateStore &m_store;
    volume::Policy m_policy;
    Clock m_clock;
    LoginState m_state;
    LoginState m_before; // the attempt that is under way
    bool m_failureLogged = false;
};

} // namespace host
