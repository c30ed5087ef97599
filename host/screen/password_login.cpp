// SPDX-License-Identifier: Apache-2.0
#include "host/screen/password_login.h"

#include "host/screen/configured_layouts.h"
#include "host/screen/error_messages.h"
#include "host/screen/guarded.h"
#include "host/screen/keyboard_hints.h"
#include "host/log.h"
#include "pba/view.h"
#include "host/screen/scopes.h"
#include "host/service/stop_signals.h"
#include "base/flag_scope.h"
#include "base/text.h"

namespace host {

using volume::Error;

PasswordLogin::PasswordLogin(UnlockSession &unlockSession, LoginThrottle &throttle, const Texts &texts,
                             bool autologonAllowed)
    : m_unlockSession(unlockSession)
    , m_gate(unlockSession, throttle)
    , m_texts(texts)
    , m_autologonAllowed(autologonAllowed)
{
}

void PasswordLogin::Attach(pba::ILoginByPasswordView *view)
{
    m_view = view;
    m_view->SetLogic(this);
}

kro::result_t PasswordLogin::IsAutologonSuppressed(bool *suppressed)
{
    *suppressed = !m_autologonAllowed;
    m_autologonAllowed = false;
    return kro::kOk;
}

template <typename Act>
kro::result_t PasswordLogin::Exclusively(const Act &act)
{
    if (!m_view)
        return kro::kNotInitialized;
    if (m_underWay)
        return kro::kInvalidState;
    return Guarded([&] {
        const base::FlagScope underWay(m_underWay);
        return act();
    });
}

kro::result_t PasswordLogin::Login(const kro::wstring_t &domain, const kro::wstring_t &userName,
                                   const kro::wstring_t &password)
{
    return Exclusively([&] { return TryLogin(domain, userName, password); });
}

kro::result_t PasswordLogin::TryLogin(const kro::wstring_t &domain, const kro::wstring_t &userName,
                                      const kro::wstring_t &password)
{
    const volume::UserName name{base::ToUtf8(domain.View()), base::ToUtf8(userName.View())};
    PasswordGate::Answer answer{Error::None};
    {
        const BusyScope busy;
        answer = m_gate.Try(name, base::ToSecretUtf8(password.View()));
    }
    // Who ended the program meanwhile does not want the system to start.
    if (StopRequested())
        return kro::kOk;
    if (answer.secondsToWait > 0)
        return RefuseForNow(answer.secondsToWait);
    if (answer.error != Error::None)
        return Refuse(answer.error);
    Log(kLogCalls, "Login: the keyslot is open.");
    return GoOn();
}

kro::result_t PasswordLogin::GoOn()
{
    if (m_unlockSession.MustReplacePassword())
        return RequireNewPassword(kPasswordExpired);
    if (m_unlockSession.HasExpired())
        m_texts.Show(m_view, kExpiredPasswordStays);
    return m_view->ShowLoggedIn();
}

kro::result_t PasswordLogin::Refuse(Error error)
{
    Log(error == Error::WrongPassword ? kLogCalls : kLogErrors,
        std::string("Login refused: ") + volume::Describe(error));
    if (error == Error::Prohibited) // no page of the view asks for it
        return kro::kProhibited;
    const MessageText &message = MessageFor(error);
    std::u16string text(m_texts.Get(message.text).View());
    if (error == Error::WrongPassword)
        text += KeyboardHints(m_texts);
    m_texts.Show(m_view, message, text);
    m_view->SelectPassword();
    return kro::kOk;
}

kro::result_t PasswordLogin::RefuseForNow(std::uint32_t secondsLeft)
{
    Log(kLogCalls, "Login refused: too many failures before.");
    const std::u16string seconds = base::ToUtf16(std::to_string(secondsLeft));
    m_texts.Show(m_view, kTooManyFailures, m_texts.Get(kTooManyFailures.text, seconds).View());
    m_view->SelectPassword();
    return kro::kOk;
}

kro::result_t PasswordLogin::ConfirmLoggedIn()
{
    return m_view ? m_view->ShowLoggedIn() : kro::kNotInitialized;
}

kro::result_t PasswordLogin::GetPasswordChangeInfo(bool *changeAllowed, kro::wstring_t *title,
                                                   kro::wstring_t *message)
{
    return Guarded([&] {
        *changeAllowed = m_unlockSession.CheckReplaceable() == Error::None;
        *title = m_texts.Get(kNoPasswordChange.title);
        *message = m_texts.Get(kNoPasswordChange.text);
        return kro::kOk;
    });
}

kro::result_t PasswordLogin::RequireNewPassword(const MessageText &why)
{
    return m_view ? m_view->ShowChangePassword(m_texts.Get(why.title), m_texts.Get(why.text), true)
                  : kro::kNotInitialized;
}

kro::result_t PasswordLogin::PrepareChangePassword(kro::wstring_t *domain, kro::wstring_t *userName)
{
    return Guarded([&] {
        const volume::UserName &name = m_unlockSession.Name();
        domain->Assign(base::ToUtf16(name.domain));
        userName->Assign(base::ToUtf16(name.user));
        return name.user.empty() ? kro::kProhibited : kro::kOk;
    });
}

kro::result_t PasswordLogin::ChangePassword(const kro::wstring_t &newPassword)
{
    return Exclusively([&] { return TryChangePassword(newPassword); });
}

kro::result_t PasswordLogin::TryChangePassword(const kro::wstring_t &newPassword)
{
    Error error = Error::None;
    {
        const BusyScope busy;
        error = m_gate.Replace(base::ToSecretUtf8(newPassword.View()));
    }
    if (StopRequested())
        return kro::kOk;
    if (error == Error::OldPasswordStays)
        Log(kLogErrors, std::string("Password change: ") + volume::Describe(error));
    else if (error != Error::None)
        return RefusePassword(error);
    Log(kLogCalls, "Password change: the new password counts.");
    const std::u16string layouts = LayoutsThatCannotType(newPassword.View());
    if (!layouts.empty())
        m_texts.Show(m_view, kPasswordNeedsLayout, m_texts.Get(kPasswordNeedsLayout.text, layouts).View());
    return m_view->ShowLoggedIn();
}

// Where another password would do the person stays on the page; where none would, it would be a dead end.
kro::result_t PasswordLogin::RefusePassword(Error error)
{
    Log(kLogErrors, std::string("Password change refused: ") + volume::Describe(error));
    if (error == Error::PasswordTooShort || error == Error::PasswordUnchanged || error == Error::OutOfMemory)
        return m_texts.Show(m_view, MessageFor(error));
    m_texts.Show(m_view, kPasswordNotSaved);
    if (!m_unlockSession.HasRecovered())
        return m_view->ShowLoggedIn();
    m_unlockSession.Forget();
    return m_view->GetMainView()->ShowInitialScreen();
}

kro::result_t PasswordLogin::CancelChangePassword()
{
    return m_unlockSession.MustReplacePassword() ? kro::kProhibited : ConfirmLoggedIn();
}

} // namespace host
