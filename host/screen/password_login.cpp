// SPDX-License-Identifier: Apache-2.0
#include "host/screen/password_login.h"

#include "base/flag_scope.h"
#include "base/text.h"
#include "host/screen/configured_layouts.h"
#include "host/screen/error_messages.h"
#include "host/screen/guarded.h"
#include "host/screen/keyboard_hints.h"
#include "pba/view.h"

namespace host {

using protocol::LoginResult;
using protocol::VolumeError;

PasswordLogin::PasswordLogin(ServiceLink &service, const Texts &texts)
    : m_service(service)
    , m_texts(texts)
{
}

void PasswordLogin::Offer(bool passwords, bool autologon)
{
    m_offered = passwords;
    m_autologonAllowed = autologon;
    m_mustReplace = false;
    m_person = {};
}

void PasswordLogin::Attach(pba::ILoginByPasswordView *view)
{
    m_view = view;
    m_view->SetLogic(this);
}

// Once: a wrong credentials file does not try for ever.
kro::result_t PasswordLogin::IsAutologonSuppressed(bool *suppressed)
{
    *suppressed = !std::exchange(m_autologonAllowed, false);
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
    if (!m_offered)
        return kro::kProhibited; // no page of the view asks for it
    return Exclusively([&] { return TryLogin({domain, userName}, password); });
}

kro::result_t PasswordLogin::TryLogin(const Person &person, const kro::wstring_t &password)
{
    m_person = {};
    m_mustReplace = false;
    const protocol::TryPassword request{base::ToUtf8(person.domain.View()), base::ToUtf8(person.user.View()),
                                        base::ToSecretUtf8(password.View())};
    const std::optional<protocol::TryPasswordReply> reply = m_service.AskBusy(request);
    if (m_service.HasEnded())
        return kro::kOk;
    if (!reply) // nobody has a name or a password of that length
        return Refuse({LoginResult::Wrong});
    if (reply->result != LoginResult::Opened)
        return Refuse(*reply);
    m_person = person;
    m_mustReplace = reply->mustReplace;
    return GoOn(reply->hasExpired);
}

kro::result_t PasswordLogin::GoOn(bool hasExpired)
{
    if (m_mustReplace)
        return ShowNewPasswordPage(kPasswordExpired);
    if (hasExpired)
        m_texts.Show(m_view, kExpiredPasswordStays);
    return m_view->ShowLoggedIn();
}

kro::result_t PasswordLogin::Refuse(const protocol::TryPasswordReply &reply)
{
    if (reply.result == LoginResult::Wait)
        return RefuseForNow(reply.secondsToWait);
    const bool wrong = reply.result == LoginResult::Wrong;
    const MessageText &message = wrong ? kWrongPassword : MessageFor(reply.error);
    std::u16string text(m_texts.Get(message.text).View());
    if (wrong)
        text += KeyboardHints(m_texts);
    m_texts.Show(m_view, message, text);
    m_view->SelectPassword();
    return kro::kOk;
}

kro::result_t PasswordLogin::RefuseForNow(std::uint32_t secondsLeft)
{
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
        const auto reply = m_service.Ask(protocol::CheckReplaceable{});
        *changeAllowed = reply && reply->error == VolumeError::None;
        *title = m_texts.Get(kNoPasswordChange.title);
        *message = m_texts.Get(kNoPasswordChange.text);
        return kro::kOk;
    });
}

kro::result_t PasswordLogin::RequireNewPassword(const Person &person)
{
    m_person = person;
    m_mustReplace = true;
    return ShowNewPasswordPage(kRecoveryNewPassword);
}

kro::result_t PasswordLogin::ShowNewPasswordPage(const MessageText &why)
{
    return m_view->ShowChangePassword(m_texts.Get(why.title), m_texts.Get(why.text), true);
}

kro::result_t PasswordLogin::PrepareChangePassword(kro::wstring_t *domain, kro::wstring_t *userName)
{
    return Guarded([&] {
        *domain = m_person.domain;
        *userName = m_person.user;
        return m_person.user.View().empty() ? kro::kProhibited : kro::kOk;
    });
}

kro::result_t PasswordLogin::ChangePassword(const kro::wstring_t &newPassword)
{
    return Exclusively([&] { return TryChangePassword(newPassword); });
}

kro::result_t PasswordLogin::TryChangePassword(const kro::wstring_t &newPassword)
{
    const protocol::ReplacePassword request{base::ToSecretUtf8(newPassword.View())};
    const auto reply = m_service.AskBusy(request);
    if (m_service.HasEnded())
        return kro::kOk;
    if (!reply || reply->error != VolumeError::None)
        return RefusePassword(reply.value_or(protocol::ReplacePasswordReply{}));
    m_mustReplace = false;
    const std::u16string layouts = LayoutsThatCannotType(newPassword.View());
    if (!layouts.empty())
        m_texts.Show(m_view, kPasswordNeedsLayout, m_texts.Get(kPasswordNeedsLayout.text, layouts).View());
    return m_view->ShowLoggedIn();
}

// Where another password would do the person stays on the page; where none would, it would be a dead end.
kro::result_t PasswordLogin::RefusePassword(const protocol::ReplacePasswordReply &reply)
{
    if (AnotherPasswordMayDo(reply.error))
        return m_texts.Show(m_view, MessageFor(reply.error));
    m_texts.Show(m_view, kPasswordNotSaved);
    m_mustReplace = false;
    if (reply.letIn)
        return m_view->ShowLoggedIn();
    m_service.Ask(protocol::Forget{});
    m_person = {};
    return m_view->GetMainView()->ShowInitialScreen();
}

kro::result_t PasswordLogin::CancelChangePassword()
{
    return m_mustReplace ? kro::kProhibited : ConfirmLoggedIn();
}

} // namespace host
