#include "host/screen/password_login.h"

#include "host/screen/configured_layouts.h"
#include "host/screen/error_messages.h"
#include "host/screen/guarded.h"
#include "host/screen/keyboard_hints.h"
#include "host/log.h"
#include "pba/view.h"
#include "host/screen/scopes.h"
#include "host/service/stop_signals.h"
#include "base/text.h"

namespace host {

using volume::Error;

PasswordLogin::PasswordLogin(OsStart &osStart, LoginThrottle &throttle, const Texts &texts,
                             bool autologonAllowed)
    : m_osStart(osStart)
    , m_throttle(throttle)
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
        const FlagScope underWay(m_underWay);
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
    if (const std::uint32_t seconds = m_throttle.SecondsLeft(); seconds > 0)
        return RefuseForNow(seconds);
    const volume::UserName name{volume::ToUtf8(domain.View()), volume::ToUtf8(userName.View())};
    const Error error = OpenVolume(name, password);
    // Who ended the program meanwhile does not want the system to start.
    if (StopRequested())
        return kro::kOk;
    if (error != Error::None)
        return Refuse(error);
    Log(kLogCalls, "Login: the keyslot is open.");
    return GoOn();
}

kro::result_t PasswordLogin::GoOn()
{
    if (m_osStart.MustReplacePassword())
        return RequireNewPassword(kPasswordExpired);
    if (m_osStart.HasExpired())
        m_texts.Show(m_view, kExpiredPasswordStays);
    return m_view->ShowLoggedIn();
}

Error PasswordLogin::OpenVolume(const volume::UserName &name, const kro::wstring_t &password)
{
    const BusyScope busy;
    m_throttle.BeginAttempt();
    const Error error = m_osStart.OpenVolume(name, volume::ToSecretUtf8(password.View()));
    if (error == Error::None)
        m_throttle.EndAttempt(name);
    else if (error != Error::WrongPassword)
        m_throttle.TakeBackAttempt();
    return error;
}

kro::result_t PasswordLogin::Refuse(Error error)
{
    Log(error == Error::WrongPassword ? kLogCalls : kLogErrors,
        std::string("Login refused: ") + volume::Describe(error));
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
    const std::u16string seconds = volume::ToUtf16(std::to_string(secondsLeft));
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
        *changeAllowed = m_osStart.CheckReplaceable() == Error::None;
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
        const volume::UserName &name = m_osStart.Name();
        domain->Assign(volume::ToUtf16(name.domain));
        userName->Assign(volume::ToUtf16(name.user));
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
        error = m_osStart.ReplacePassword(volume::ToSecretUtf8(newPassword.View()));
    }
    if (StopRequested())
        return kro::kOk;
    if (error == Error::OldPasswordStays)
        Log(kLogErrors, std::string("Password change: ") + volume::Describe(error));
    else if (error != Error::None)
        return RefusePassword(error);
    m_throttle.EndAttempt(m_osStart.Name()); // a recovery ends the failures before it
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
    if (!m_osStart.HasRecovered())
        return m_view->ShowLoggedIn();
    m_osStart.Forget();
    return m_view->GetMainView()->ShowInitialScreen();
}

kro::result_t PasswordLogin::CancelChangePassword()
{
    return m_osStart.MustReplacePassword() ? kro::kProhibited : ConfirmLoggedIn();
}

} // namespace host
