// SPDX-License-Identifier: Apache-2.0
// Login by user name and password, and the password change that may follow it.
#pragma once

#include "kro/result.h"
#include "kro/string.h"
#include "pba/message_view.h"

namespace pba {

class IMainView;

// Implemented by the host. Every call is made on the view's thread; a negative result makes the view report
// an internal error and abandon what the person asked for.
class ILoginByPasswordLogic
{
public:
    virtual ~ILoginByPasswordLogic() = default;

    // Asked whenever the login page is shown. `*suppressed` arrives as false; left so, the view tries an
    // automatic logon from its credentials file two seconds later.
    virtual kro::result_t IsAutologonSuppressed(bool *suppressed) = 0;
    // Requests made inside are carried out when it has returned without a failure. The strings are wiped
    // after the call; copy what must stay.
    virtual kro::result_t Login(const kro::wstring_t &domain, const kro::wstring_t &userName,
                                const kro::wstring_t &password) = 0;
    // The person has seen that the password cannot be changed now.
    virtual kro::result_t ConfirmLoggedIn() = 0;
    // Asked after a login by "Password change". `*changeAllowed` arrives as false; left so, title and
    // message say why.
    virtual kro::result_t GetPasswordChangeInfo(bool *changeAllowed, kro::wstring_t *title,
                                                kro::wstring_t *message) = 0;
    // Whose password is about to change. An empty domain is not shown.
    virtual kro::result_t PrepareChangePassword(kro::wstring_t *domain, kro::wstring_t *userName) = 0;
    // Whether a password will do is this call's decision; it may be empty. Requests are carried out shortly
    // after it has returned without a failure.
    virtual kro::result_t ChangePassword(const kro::wstring_t &newPassword) = 0;
    virtual kro::result_t CancelChangePassword() = 0;
};

// Implemented by the view.
class ILoginByPasswordView : public IMessageView
{
public:
    virtual IMainView *GetMainView() = 0;
    virtual void SetLogic(ILoginByPasswordLogic *logic) = 0;
    // Focus to the field, all its text selected, at once.
    virtual void SelectPassword() = 0;
    virtual void SelectUserName() = 0;
    // Requests the password-change page. `hideCancel` makes the change mandatory.
    virtual kro::result_t ShowChangePassword(const kro::wstring_t &title, const kro::wstring_t &message,
                                             bool hideCancel) = 0;
    // Reports a successful login. The view goes on with the password change that the person asked for, or
    // asks to start the operating system.
    virtual kro::result_t ShowLoggedIn() = 0;

protected:
    ~ILoginByPasswordView() = default;
};

} // namespace pba
