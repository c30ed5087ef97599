#include "host/service/login_throttle.h"

#include <ctime>
#include <utility>

#include "host/service/last_login.h"
#include "host/log.h"

namespace host {

std::int64_t LoginThrottle::SystemTime()
{
    return std::time(nullptr);
}

LoginThrottle::LoginThrottle(StateStore &store, const volume::Policy &policy, Clock clock)
    : m_store(store)
    , m_policy(policy)
    , m_clock(std::move(clock))
    , m_state(store.Read())
{
}

std::uint32_t LoginThrottle::SecondsLeft()
{
    if (m_state.failures <= m_policy.freeAttempts)
        return 0;
    const std::int64_t now = m_clock();
    if (now < m_state.lastFailure) {
        m_state.lastFailure = now;
        Store();
    }
    const std::int64_t passed = now - m_state.lastFailure;
    return passed < m_policy.delaySeconds ? m_policy.delaySeconds - static_cast<std::uint32_t>(passed) : 0;
}

void LoginThrottle::BeginAttempt()
{
    m_before = m_state;
    ++m_state.failures;
    m_state.lastFailure = m_clock();
    Store();
}

void LoginThrottle::TakeBackAttempt()
{
    m_state = m_before;
    Store();
}

void LoginThrottle::EndAttempt(const volume::UserName &name)
{
    m_state.failures = 0;
    if (m_store.KeepsLastLogin())
        m_state.lastLogin = WhatToRemember(name);
    Store();
}

void LoginThrottle::Store()
{
    if (m_store.Write(m_state) || m_failureLogged)
        return;
    Log(kLogErrors, "The count of failed logins cannot be kept beyond the end of the program.");
    m_failureLogged = true;
}

} // namespace host
