// SPDX-License-Identifier: Apache-2.0
// The view module: its four exports and its main view.
//
// Conventions of the whole boundary (include/kro, include/pba):
// - Interfaces are abstract classes; the order in which their members are declared is the contract. New
//   members are only ever added at the end.
// - Everything runs on one thread, the one that calls Run. Nothing is locked. The host may call back from
//   inside any call that the view makes to it.
// - Objects are freed by the side that made them. Logic objects are not owned by the view: they must live
//   until Run has returned or another one has taken their place. A main view lives until DeleteMainView,
//   which belongs behind Run; the narrow views that are handed over in a run live until it ends, not longer.
// - Strings and lists are those of include/kro. String arguments are valid during the call only and always
//   end in a zero. Out flags arrive as false.
// - No exception crosses the boundary, save std::bad_alloc from Run and from ITranslator::Translate.
//
// Requests. Most calls that change the screen do not act at once, for the view may be in the middle of a
// call to the host: ShowInitialScreen, ShowTestBootMessage, Close, ShowChangePassword, ShowLoggedIn,
// StartEntropyCollection, ShowChallenge, StartResponceInput, and the recovery that a message leads to. The
// view keeps the newest request only and carries it out when the host's call has returned without a failure.
// That holds inside Init, IsAutologonSuppressed, StartLoginByPassword, Login, GetPasswordChangeInfo,
// ConfirmLoggedIn, ChangePassword, CancelChangePassword, StartOperatingSystem, LoginByToken,
// StartPasswordRecovery, SetEntropy, GotoChangePassword, QuitRecovery (whatever it answers) and
// RestartRecovery; and inside PrepareChangePassword when it follows GetPasswordChangeInfo, but not when the
// host itself has asked for the password-change page. GetPasswordChangeInfo and the call that follows it, be
// it PrepareChangePassword or ConfirmLoggedIn, count as one. A request made anywhere else, or inside a call
// that fails, waits for the next of these to succeed. ShowMessage and ShowStartingOsScreen act at once.
#pragma once

#include <cstdint>

#include "kro/result.h"
#include "pba/business_logic.h"
#include "pba/login_by_password.h"
#include "pba/login_by_token.h"
#include "pba/password_recovery.h"
#include "pba/translator.h"

namespace pba {

// IMainView::SetOptions: what a person may log on with. Other bits are kept and mean nothing.
inline constexpr std::uint32_t kOptionLoginByPassword = 1;
inline constexpr std::uint32_t kOptionLoginByToken = 4;

// Implemented by the view, made by CreateMainView.
class IMainView
{
public:
    virtual ~IMainView() = default;

    // Before Run the pointer is kept for it; during Run it takes effect at once. Null makes the next use an
    // internal error.
    virtual void SetBusinessLogic(IBusinessLogic *logic) = 0;
    // Shows the user interface and returns when it has ended: 0, or kUnspecifiedError when the event loop
    // ended with a code. May be called again afterwards. While this or another view runs, or the host has an
    // application object of the toolkit, it answers kInvalidState.
    virtual kro::result_t Run() = 0;
    // Before Run the flags are kept for it. Always 0.
    virtual kro::result_t SetOptions(std::uint32_t options) = 0;

    // Outside Run the following answer kInvalidState or null.
    virtual kro::result_t ShowInitialScreen() = 0;
    virtual ILoginByPasswordView *GetLoginByPasswordView() = 0;
    virtual void Idle() = 0;
    virtual kro::result_t ShowTestBootMessage() = 0;
    // Shows and paints the page at once.
    virtual kro::result_t ShowStartingOsScreen() = 0;
    // Ends the user interface; the last picture stays on the display.
    virtual kro::result_t Close() = 0;
};

} // namespace pba

extern "C" {

// Null only when there is no memory.
__attribute__((visibility("default"))) pba::IMainView *CreateMainView();
// Null is ignored, and so is a view whose Run has not returned: call it again then.
__attribute__((visibility("default"))) void DeleteMainView(pba::IMainView *view);
// Null when there is no catalogue: go on untranslated.
__attribute__((visibility("default"))) pba::ITranslator *CreateTranslator();
// Null is ignored.
__attribute__((visibility("default"))) void DeleteTranslator(pba::ITranslator *translator);

} // extern "C"
