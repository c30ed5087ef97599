// SPDX-License-Identifier: Apache-2.0
// The pages of the login by user name and password, and of the new password.
#pragma once

#include "host/screen/service_link.h"
#include "host/screen/texts.h"
#include "pba/login_by_password.h"

namespace host {

struct Person
{
    kro::wstring_t domain;
    kro::wstring_t user;
};

class PasswordLogin final : public pba::ILoginByPasswordLogic
{
public:
    PasswordLogin(ServiceLink &service, const Texts &texts);

    // What the service allows from now on.
    void Offer(bool passwords, bool autologon);
    // The view of the login page; it gets this object as its logic.
    void Attach(pba::ILoginByPasswordView *view);
    // Whoever this is has lost the password, and nothing starts until there is a new one. Asks for its page.
    kro::result_t RequireNewPassword(const Person &person);

    kro::result_t IsAutologonSuppressed(bool *suppressed) override;
    // A wrong password is no failure: a message, and the person tries again, after many after a delay.
    // kInvalidState while a login is under way, since its messages run a nested event loop.
    kro::result_t Login(const kro::wstring_t &domain, const kro::wstring_t &userName,
                        const kro::wstring_t &password) override;
    kro::result_t ConfirmLoggedIn() override;
    // Where no password can be replaced the person is told so and then goes on.
    kro::result_t GetPasswordChangeInfo(bool *changeAllowed, kro::wstring_t *title,
                                        kro::wstring_t *message) override;
    kro::result_t PrepareChangePassword(kro::wstring_t *domain, kro::wstring_t *userName) override;
    kro::result_t ChangePassword(const kro::wstring_t &newPassword) override;
    kro::result_t CancelChangePassword() override;

private:
    // Nothing is begun while a message of what is under way is open.
    template <typename Act>
    kro::result_t Exclusively(const Act &act);
    kro::result_t TryLogin(const Person &person, const kro::wstring_t &password);
    kro::result_t GoOn(bool hasExpired);
    kro::result_t Refuse(const protocol::TryPasswordReply &reply);
    kro::result_t RefuseForNow(std::uint32_t secondsLeft);
    kro::result_t ShowNewPasswordPage(const MessageText &why);
    kro::result_t TryChangePassword(const kro::wstring_t &newPassword);
    kro::result_t RefusePassword(const protocol::ReplacePasswordReply &reply);

    ServiceLink &m_service;
    const Texts &m_texts;
    pba::ILoginByPasswordView *m_view = nullptr;
    Person m_person; // who was let in last
    bool m_offered = false;
    bool m_autologonAllowed = false;
    bool m_mustReplace = false;
    bool m_underWay = false;
};

} // namespace host
