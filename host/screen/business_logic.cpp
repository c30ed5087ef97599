// SPDX-License-Identifier: Apache-2.0
#include "host/screen/business_logic.h"

#include "host/screen/guarded.h"
#include "pba/view.h"

namespace host {
namespace {

// Without any way in the view says that there are no users.
std::uint32_t ViewOptions(const protocol::HelloReply &hello)
{
    return (hello.passwordsOffered ? pba::kOptionLoginByPassword : 0) |
           (hello.tokensOffered ? pba::kOptionLoginByToken : 0);
}

} // namespace

BusinessLogic::BusinessLogic(ServiceLink &service, const Texts &texts)
    : m_service(service)
    , m_passwordLogin(service, texts)
    , m_recovery(service, m_passwordLogin, texts)
    , m_tokenLogin(service, texts)
{
}

kro::result_t BusinessLogic::Init(pba::IMainView *view)
{
    return Guarded([&] { return Begin(view); });
}

// The login page asks about the automatic logon as soon as it is shown, so its logic must be there before.
kro::result_t BusinessLogic::Begin(pba::IMainView *view)
{
    pba::ILoginByPasswordView *loginView = view->GetLoginByPasswordView();
    if (!loginView)
        return kro::kUnexpected;
    const std::optional<protocol::HelloReply> hello = m_service.Ask(protocol::Hello{});
    if (!hello || m_service.HasEnded())
        return kro::kCancelled;
    m_view = view;
    m_passwordLogin.Offer(hello->passwordsOffered, hello->autologonAllowed);
    m_passwordLogin.Attach(loginView);
    view->SetOptions(ViewOptions(*hello));
    return hello->testBoot ? view->ShowTestBootMessage() : view->ShowInitialScreen();
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
    return Guarded([&] { return TryStart(); });
}

kro::result_t BusinessLogic::TryStart()
{
    using protocol::StartResult;
    const std::optional<protocol::StartReply> reply = m_service.AskBusy(protocol::Start{});
    if (!reply || reply->result == StartResult::Cancelled)
        return kro::kCancelled;
    if (reply->result == StartResult::Prohibited)
        return kro::kProhibited;
    if (reply->result == StartResult::Failed)
        return kro::kUnspecifiedError;
    m_started = true;
    m_view->ShowStartingOsScreen(); // only a picture: the start does not depend on it
    return m_view->Close();
}

} // namespace host
