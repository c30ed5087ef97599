// SPDX-License-Identifier: Apache-2.0
#include "host/screen/business_logic.h"

#include "host/screen/guarded.h"
#include "host/log.h"
#include "pba/view.h"
#include "host/service/offered_ways.h"
#include "host/service/stop_signals.h"

namespace host {

BusinessLogic::BusinessLogic(UnlockSession &unlockSession, LoginThrottle &throttle, const Texts &texts,
                             const LogicOptions &options)
    : m_unlockSession(unlockSession)
    , m_options(options)
    , m_passwordLogin(unlockSession, throttle, texts, options.autologonAllowed)
    , m_recovery(unlockSession, m_passwordLogin, texts)
    , m_tokenLogin(unlockSession, texts, options.tokenModule)
{
}

// Without any way in the view says that there are no users.
std::uint32_t BusinessLogic::ViewOptions() const
{
    return (OffersPasswords(m_unlockSession) ? pba::kOptionLoginByPassword : 0) |
           (m_tokenLogin.IsOffered() ? pba::kOptionLoginByToken : 0);
}

// The login page asks about the automatic logon as soon as it is shown, so its logic must be there before.
kro::result_t BusinessLogic::Init(pba::IMainView *view)
{
    pba::ILoginByPasswordView *loginView = view->GetLoginByPasswordView();
    if (!loginView)
        return kro::kUnexpected;
    m_view = view;
    m_passwordLogin.Attach(loginView);
    view->SetOptions(ViewOptions());
    return m_unlockSession.IsTestBoot() ? view->ShowTestBootMessage() : view->ShowInitialScreen();
}

kro::result_t BusinessLogic::UpdateConnectedTokens(bool *screenMustChange)
{
    return Guarded([&] {
        *screenMustChange = m_tokenLogin.HasScreenChanged();
        return kro::kOk;
    });
}

kro::result_t BusinessLogic::CheckTokensConnected(bool *connected)
{
    return Guarded([&] {
        *connected = m_tokenLogin.IsAnyUsable();
        return kro::kOk;
    });
}

kro::result_t BusinessLogic::StartLoginByPassword(pba::ILoginByPasswordView *view)
{
    m_passwordLogin.Attach(view);
    return kro::kOk;
}

kro::result_t BusinessLogic::StartPasswordRecovery(pba::IPasswordRecoveryView *view)
{
    return m_view ? m_recovery.Start(view, m_view) : kro::kNotInitialized;
}

kro::result_t BusinessLogic::StartLoginByToken(pba::ILoginByTokenView *view)
{
    m_tokenLogin.Attach(view);
    return kro::kOk;
}

kro::result_t BusinessLogic::StartOperatingSystem()
{
    if (!m_view)
        return kro::kNotInitialized;
    // Who ended the program does not want the system to start.
    if (StopRequested())
        return kro::kCancelled;
    return Guarded([&] {
        const kro::result_t result = m_unlockSession.Start();
        if (kro::Failed(result))
            return result;
        Log(kLogCalls, m_unlockSession.IsTestBoot() ? "The test boot ends." : "The operating system starts.");
        m_view->ShowStartingOsScreen(); // only a picture: the start does not depend on it
        return m_view->Close();
    });
}

} // namespace host
