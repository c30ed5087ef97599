// SPDX-License-Identifier: Apache-2.0
// Slows down guessing: after some failed logins each further one makes the next wait. The host itself never
// waits, it refuses and says for how long.
//
// A login counts as failed before it is tried, so that ending the program in the middle gains nothing. It
// counts at once in this program, and in the store as soon as no other program is changing that, at the
// latest before the answer is given. Where the store cannot be written, this program's own count holds;
// nobody is locked out by it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "host/service/clock.h"
#include "host/service/state_store.h"
#include "volume/luks/policy.h"

namespace host {

class LoginThrottle
{
public:
    using PolicySource = std::function<volume::Policy()>; // the one that holds now

    // `store` and `clock` must outlive this object. The clock learns which dates were seen before.
    LoginThrottle(StateStore &store, Clock &clock, PolicySource policy);

    // Counts the attempt that begins and answers 0, or how many seconds it has to wait: then nothing has
    // changed. Each attempt ends with one of those below, before anybody learns what came of it.
    std::uint32_t BeginAttempt();
    void FailAttempt() { Store(); }
    // It was tried for nothing: the person is not to blame.
    void TakeBackAttempt();
    // The volume is open for this person.
    void EndAttempt(const volume::UserName &name);

    // Who logged on last, as the store had it at the start.
    const std::optional<volume::UserName> &FormerLogin() const { return m_formerLogin; }

private:
    // What happened here that the store does not hold.
    struct Unwritten
    {
        bool loggedIn = false;
        std::optional<volume::UserName> lastLogin{};
        int failures = 0; // after that; below 0 what was counted in the store and is taken back
        std::int64_t lastFailure = 0;
        bool operator==(const Unwritten &) const = default;
    };

    LoginState Recall(const LoginState &stored);
    std::uint32_t SecondsLeft(const LoginState &state) const;
    void Store();

    StateStore &m_store;
    Clock &m_clock;
    PolicySource m_policy;
    std::optional<volume::UserName> m_formerLogin;
    Unwritten m_unwritten;
    std::chrono::steady_clock::time_point m_patienceEnds;
    bool m_failureLogged = false;
};

} // namespace host
