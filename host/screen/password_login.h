// SPDX-License-Identifier: Apache-2.0
// Login by user name and password on a LUKS2 volume.
#pragma once

#include "pba/login_by_password.h"
#include "host/service/password_gate.h"
#include "host/screen/texts.h"

namespace host {

class PasswordLogin final : public pba::ILoginByPasswordLogic
{
public:
    PasswordLogin(UnlockSession &unlockSession, LoginThrottle &throttle, const Texts &texts,
                  bool autologonAllowed);

    // The view of the login page; it gets this object as its logic.
    void Attach(pba::ILoginByPasswordView *view);

    // Asks for the page on which whoever UnlockSession has let in must choose a new password. `why` is its
    // title and message.
    kro::result_t RequireNewPassword(const MessageText &why);

    // At most once in the life of the program, so that a wrong credentials file does not try for ever.
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
    kro::result_t TryLogin(const kro::wstring_t &domain, const kro::wstring_t &userName,
                           const kro::wstring_t &password);
    kro::result_t Refuse(volume::Error error);
    kro::result_t GoOn();
    kro::result_t TryChangePassword(const kro::wstring_t &newPassword);
    kro::result_t RefusePassword(volume::Error error);
    kro::result_t RefuseForNow(std::uint32_t secondsLeft);

    UnlockSession &m_unlockSession;
    PasswordGate m_gate;
    const Texts &m_texts;
    pba::ILoginByPasswordView *m_view = nullptr;
    bool m_autologonAllowed;
    bool m_underWay = false;
};

} // namespace host
