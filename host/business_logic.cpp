#include "business_logic.h"

#include "guarded.h"
#include "log.h"
#include "pba/password_recovery.h"
#include "pba/view.h"
#include "stop_signals.h"

namespace host {

BusinessLogic::BusinessLogic(OsStart &osStart, const Texts &texts, const LogicOptions &options)
    : m_osStart(osStart)
    , m_texts(texts)
    , m_options(options)
    , m_passwordLogin(osStart, texts, options.autologonAllowed)
{
}

// The login page asks about the automatic logon as soon as it is shown, so its logic must be there before.
kro::result_t BusinessLogic::Init(pba::IMainView *view)
{
    pba::ILoginByPasswordView *loginView = view->GetLoginByPasswordView();
    if (!loginView)
        return kro::kUnexpected;
    m_view = view;
    m_passwordLogin.Attach(loginView);
    view->SetOptions(m_options.passwordLogin ? pba::kOptionLoginByPassword : 0);
    return m_osStart.IsTestBoot() ? view->ShowTestBootMessage() : view->ShowInitialScreen();
}

// There are no tokens here, hence no change and none connected.
kro::result_t BusinessLogic::UpdateConnectedTokens(bool *screenMustChange)
{
    *screenMustChange = false;
    return kro::kOk;
}

kro::result_t BusinessLogic::CheckTokensConnected(bool *connected)
{
    *connected = false;
    return kro::kOk;
}

kro::result_t BusinessLogic::StartLoginByPassword(pba::ILoginByPasswordView *view)
{
    m_passwordLogin.Attach(view);
    return kro::kOk;
}

// A person pressed a button that is always there: an answer in words, not an internal error.
kro::result_t BusinessLogic::StartPasswordRecovery(pba::IPasswordRecoveryView *view)
{
    return Guarded([&] {
        m_texts.Show(view, kNoPasswordRecovery);
        return kro::kOk;
    });
}

// The option that leads here is never set.
kro::result_t BusinessLogic::StartLoginByToken(pba::ILoginByTokenView *)
{
    return kro::kNotSupported;
}

kro::result_t BusinessLogic::StartOperatingSystem()
{
    if (!m_view)
        return kro::kNotInitialized;
    // Who ended the program does not want the system to start.
    if (StopRequested())
        return kro::kCancelled;
    return Guarded([&] {
        const kro::result_t result = m_osStart.Start();
        if (kro::Failed(result))
            return result;
        Log(kLogCalls, m_osStart.IsTestBoot() ? "The test boot ends." : "The operating system starts.");
        m_view->ShowStartingOsScreen(); // only a picture: the start does not depend on it
        return m_view->Close();
    });
}

} // namespace host
