// SPDX-License-Identifier: Apache-2.0
#include "host/service/clock.h"

#include <algorithm>
#include <ctime>
#include <utility>

namespace host {

std::int64_t Clock::SystemDate()
{
    return std::time(nullptr);
}

std::int64_t Clock::SecondsSinceBoot()
{
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return time.tv_sec;
}

Clock::Clock(const Source &date, Source sinceBoot)
    : m_sinceBoot(std::move(sinceBoot))
    , m_zero(date() - m_sinceBoot())
{
}

void Clock::HaveSeen(std::int64_t date)
{
    m_ahead += std::max<std::int64_t>(date - Now(), 0);
}

} // namespace host
