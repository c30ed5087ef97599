// SPDX-License-Identifier: Apache-2.0
// What the view asks at the start of each activity.
#pragma once

#include "host/screen/password_login.h"
#include "host/screen/password_recovery.h"
#include "host/screen/token_login.h"
#include "pba/business_logic.h"

namespace host {

class BusinessLogic final : public pba::IBusinessLogic
{
public:
    // Both must outlive this object.
    BusinessLogic(ServiceLink &service, const Texts &texts);

    // kCancelled when the service has ended.
    kro::result_t Init(pba::IMainView *view) override;
    kro::result_t UpdateConnectedTokens(bool *screenMustChange) override;
    kro::result_t CheckTokensConnected(bool *connected) override;
    kro::result_t StartLoginByPassword(pba::ILoginByPasswordView *view) override;
    kro::result_t StartPasswordRecovery(pba::IPasswordRecoveryView *view) override;
    kro::result_t StartLoginByToken(pba::ILoginByTokenView *view) override;
    kro::result_t StartOperatingSystem() override;

    bool HasStarted() const { return m_started; }

private:
    kro::result_t Begin(pba::IMainView *view);
    kro::result_t TryStart();

    ServiceLink &m_service;
    PasswordLogin m_passwordLogin;
    PasswordRecovery m_recovery;
    TokenLogin m_tokenLogin;
    pba::IMainView *m_view = nullptr;
    bool m_started = false;
};

} // namespace host
