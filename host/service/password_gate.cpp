// SPDX-License-Identifier: Apache-2.0
#include "host/service/password_gate.h"

namespace host {

using volume::Error;

PasswordGate::Answer PasswordGate::Try(const volume::UserName &name, const base::Secret &password)
{
    m_unlockSession.Forget();
    if (!m_unlockSession.TakesPasswords())
        return {Error::Prohibited};
    m_unlockSession.LookAnew();
    if (const std::uint32_t seconds = m_throttle.BeginAttempt(); seconds > 0)
        return {Error::None, seconds};
    const Error error = m_unlockSession.OpenVolume(name, password);
    if (error == Error::None)
        m_throttle.EndAttempt(name);
    else if (error == Error::WrongPassword)
        m_throttle.FailAttempt();
    else
        m_throttle.TakeBackAttempt();
    return {error};
}

Error PasswordGate::Replace(const base::Secret &password)
{
    const Error error = m_unlockSession.ReplacePassword(password);
    if (error == Error::None || error == Error::OldPasswordStays)
        m_throttle.EndAttempt(m_unlockSession.Name());
    return error;
}

} // namespace host
