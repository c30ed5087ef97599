// SPDX-License-Identifier: Apache-2.0
// Signals by which a person ends or stops the program, held back while something must not be left halfway.
#pragma once

#include <csignal>

namespace admin {

inline constexpr int kInterruptions[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP};

// What came meanwhile takes effect afterwards.
class HeldSignals
{
public:
    HeldSignals()
    {
        sigset_t held;
        sigemptyset(&held);
        for (int signal : kInterruptions)
            sigaddset(&held, signal);
        sigprocmask(SIG_BLOCK, &held, &m_former);
    }
    ~HeldSignals() { sigprocmask(SIG_SETMASK, &m_former, nullptr); }
    HeldSignals(const HeldSignals &) = delete;
    HeldSignals &operator=(const HeldSignals &) = delete;

    const sigset_t &FormerMask() const { return m_former; }

private:
    sigset_t m_former;
};

} // namespace admin
