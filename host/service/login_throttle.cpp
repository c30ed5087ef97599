// SPDX-License-Identifier: Apache-2.0
#include "host/service/login_throttle.h"

#include <algorithm>
#include <utility>

#include "host/service/last_login.h"
#include "host/log.h"
#include "volume/luks/policy.h"
#include "volume/luks/write_lock.h"

namespace host {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

// What another host takes to count: worth waiting for, so that no two try by the same number.
constexpr milliseconds kMomentOfAnother{500};

} // namespace

LoginThrottle::LoginThrottle(StateStore &store, Clock &clock, PolicySource policy)
    : m_store(store)
    , m_clock(clock)
    , m_policy(std::move(policy))
{
    m_formerLogin = Recall(store.Read()).lastLogin;
}

// What the store holds, with what it does not hold yet.
LoginState LoginThrottle::Recall(const LoginState &stored)
{
    LoginState state = stored;
    if (const std::int64_t reset = m_policy().clockReset; reset != state.clockReset) {
        m_clock.ForgetSeen();
        state.clockReset = reset;
        state.seen = reset;
        state.lastFailure = std::min(state.lastFailure, m_clock.Now());
    }
    m_clock.HaveSeen(std::max(state.seen, state.lastFailure));
    if (m_unwritten.loggedIn) {
        state.failures = 0;
        state.lastLogin = m_unwritten.lastLogin ? m_unwritten.lastLogin : state.lastLogin;
    }
    const std::int64_t failures = std::int64_t{state.failures} + m_unwritten.failures;
    state.failures = static_cast<std::uint32_t>(std::max<std::int64_t>(failures, 0));
    state.seen = m_clock.Now();
    state.lastFailure = std::min(std::max(state.lastFailure, m_unwritten.lastFailure), state.seen);
    return state;
}

std::uint32_t LoginThrottle::SecondsLeft(const LoginState &state) const
{
    const volume::Policy policy = m_policy();
    const std::int64_t passed = m_clock.Now() - state.lastFailure;
    return state.failures > policy.freeAttempts && passed < policy.delaySeconds
               ? policy.delaySeconds - static_cast<std::uint32_t>(passed)
               : 0;
}

std::uint32_t LoginThrottle::BeginAttempt()
{
    std::uint32_t secondsLeft = 0;
    const auto count = [&](const LoginState &stored) -> std::optional<LoginState> {
        LoginState state = Recall(stored);
        secondsLeft = SecondsLeft(state);
        if (secondsLeft > 0)
            return std::nullopt;
        ++state.failures;
        state.lastFailure = state.seen;
        return state;
    };
    m_patienceEnds = steady_clock::now() + volume::kLockPatience;
    const bool written = m_store.Update(count, kMomentOfAnother);
    if (!written)
        count(m_store.Read());
    if (secondsLeft > 0)
        return secondsLeft;
    if (written) {
        m_unwritten = {};
    } else {
        ++m_unwritten.failures;
        m_unwritten.lastFailure = m_clock.Now();
    }
    return 0;
}

void LoginThrottle::TakeBackAttempt()
{
    --m_unwritten.failures;
    Store();
}

void LoginThrottle::EndAttempt(const volume::UserName &name)
{
    m_unwritten = {};
    m_unwritten.loggedIn = true;
    if (m_store.KeepsLastLogin())
        m_unwritten.lastLogin = WhatToRemember(name);
    Store();
}

void LoginThrottle::Store()
{
    if (m_unwritten == Unwritten{})
        return;
    const auto left = std::chrono::duration_cast<milliseconds>(m_patienceEnds - steady_clock::now());
    if (m_store.Update([this](const LoginState &stored) { return Recall(stored); },
                       std::max(left, milliseconds{0}))) {
        m_unwritten = {};
    } else if (!m_failureLogged) {
        Log(kLogErrors, "The count of failed logins cannot be kept beyond the end of the program.");
        m_failureLogged = true;
    }
}

} // namespace host
