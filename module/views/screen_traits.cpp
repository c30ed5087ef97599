// SPDX-License-Identifier: Apache-2.0
#include "module/views/screen_traits.h"

#include <array>

#include "module/settings/paths.h"
#include "module/forms/ui_pba_main_window.h"

namespace pba {

namespace {

using Form = Ui::PbaMainWindow;

QPushButton *LoginButton(const Form &form)
{
    return form.loginButton;
}

QPushButton *SaveButton(const Form &form)
{
    return form.saveNewPasswordButton;
}

QPushButton *ContinueToResponse(const Form &form)
{
    return form.continueToResponceButton;
}

QPushButton *TestBootButton(const Form &form)
{
    return form.testBootButton;
}

QWidget *NewPassword(const Form &form)
{
    return form.newPassword;
}

QWidget *ContinueToResponseFocus(const Form &form)
{
    return form.continueToResponceButton;
}

QWidget *TestBootFocus(const Form &form)
{
    return form.testBootButton;
}

// default button, focus, help text, help button, recovery, passive
constexpr std::array<ScreenTraits, kScreenCount> kTraits = {{
    {LoginButton, nullptr, kLoginByPasswordHelpPath, true, false, false},
    {SaveButton, NewPassword, kChangePasswordHelpPath, true, false, false},
    {nullptr, nullptr, kPasswordRecoveryHelpPath, true, true, false},
    {ContinueToResponse, ContinueToResponseFocus, kPasswordRecoveryHelpPath, true, true, false},
    {nullptr, nullptr, kPasswordRecoveryHelpPath, true, true, false},
    {TestBootButton, TestBootFocus, nullptr, false, false, true},
    {nullptr, nullptr, kLoginByTokenHelpPath, true, false, false},
    {nullptr, nullptr, kLoginByTokenHelpPath, true, false, false},
    {nullptr, nullptr, nullptr, false, false, true},
    {nullptr, nullptr, nullptr, false, false, true},
    {nullptr, nullptr, kPasswordRecoveryHelpPath, true, false, false},
    {nullptr, nullptr, nullptr, true, false, false},
}};

} // namespace

const ScreenTraits &TraitsOf(int screen)
{
    return kTraits.at(static_cast<std::size_t>(screen));
}

} // namespace pba
