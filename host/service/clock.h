// SPDX-License-Identifier: Apache-2.0
// The date by which passwords expire and logins have to wait. The computer's clock is read once; from then on
// only the time since the computer's start is added, so that setting the clock gains nothing within one run.
#pragma once

#include <cstdint>
#include <functional>

namespace host {

class Clock
{
public:
    using Source = std::function<std::int64_t()>; // in seconds
    static std::int64_t SystemDate();
    static std::int64_t SecondsSinceBoot();

    explicit Clock(const Source &date = SystemDate, Source sinceBoot = SecondsSinceBoot);

    // In seconds since 1970.
    std::int64_t Now() const { return m_zero + m_ahead + m_sinceBoot(); }
    // It cannot be earlier than what was seen already: the computer's clock was set back.
    void HaveSeen(std::int64_t date);
    // Back to the computer's clock, whatever was seen.
    void ForgetSeen() { m_ahead = 0; }

private:
    Source m_sinceBoot;
    std::int64_t m_zero; // the date of the computer's start
    std::int64_t m_ahead = 0;
};

} // namespace host
