#include "password_login.h"

#include "guarded.h"
#include "log.h"
#include "scopes.h"
#include "stop_signals.h"
#include "volume/text.h"

namespace host {
namespace {

using volume::Error;

const MessageText &MessageFor(Error error)
{
    switch (error) {
    case Error::WrongPassword:
        return kWrongPassword;
    case Error::OutOfMemory:
        return kOutOfMemory;
    case Error::Vanished:
        return kVolumeVanished;
    default:
        return kVolumeUnreadable;
    }
}

} // namespace

PasswordLogin::PasswordLogin(OsStart &osStart, const Texts &texts, bool autologonAllowed)
    : m_osStart(osStart)
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

kro::result_t PasswordLogin::Login(const kro::wstring_t &domain, const kro::wstring_t &userName,
                                   const kro::wstring_t &password)
{
    if (!m_view)
        return kro::kNotInitialized;
    if (m_underWay)
        return kro::kInvalidState;
    return Guarded([&] {
        const FlagScope underWay(m_underWay);
        return TryLogin(domain, userName, password);
    });
}

kro::result_t PasswordLogin::TryLogin(const kro::wstring_t &domain, const kro::wstring_t &userName,
                                      const kro::wstring_t &password)
{
    const volume::UserName name{volume::ToUtf8(domain.View()), volume::ToUtf8(userName.View())};
    Error error = Error::None;
    {
        const BusyScope busy;
        const volume::Secret secret = volume::ToSecretUtf8(password.View());
        error = m_osStart.OpenVolume(name, secret);
    }
    // Who ended the program meanwhile does not want the system to start.
    if (StopRequested())
        return kro::kOk;
    if (error != Error::None)
        return Refuse(error);
    Log(kLogCalls, "Login: the keyslot is open.");
    return m_view->ShowLoggedIn();
}

kro::result_t PasswordLogin::Refuse(Error error)
{
    Log(error == Error::WrongPassword ? kLogCalls : kLogErrors,
        std::string("Login refused: ") + volume::Describe(error));
    m_texts.Show(m_view, MessageFor(error));
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
        *changeAllowed = false;
        *title = m_texts.Get(kNoPasswordChange.title);
        *message = m_texts.Get(kNoPasswordChange.text);
        return kro::kOk;
    });
}

// The page that these two serve is never asked for.
kro::result_t PasswordLogin::PrepareChangePassword(kro::wstring_t *, kro::wstring_t *)
{
    return kro::kNotSupported;
}

kro::result_t PasswordLogin::ChangePassword(const kro::wstring_t &)
{
    return kro::kNotSupported;
}

kro::result_t PasswordLogin::CancelChangePassword()
{
    return ConfirmLoggedIn();
}

} // namespace host
