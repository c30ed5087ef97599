// SPDX-License-Identifier: Apache-2.0
// What the view asks this host at the start of each activity.
#pragma once

#include "host/screen/password_login.h"
#include "host/screen/password_recovery.h"
#include "pba/business_logic.h"
#include "host/screen/token_login.h"

namespace host {

struct LogicOptions
{
    bool autologonAllowed = false;
    std::string tokenModule = {}; // a PKCS#11 module; empty: those that the system's configuration names
};

class BusinessLogic final : public pba::IBusinessLogic
{
public:
    BusinessLogic(UnlockSession &unlockSession, LoginThrottle &throttle, const Texts &texts,
                  const LogicOptions &options);

    kro::result_t Init(pba::IMainView *view) override;
    kro::result_t UpdateConnectedTokens(bool *screenMustChange) override;
    kro::result_t CheckTokensConnected(bool *connected) override;
    kro::result_t StartLoginByPassword(pba::ILoginByPasswordView *view) override;
    kro::result_t StartPasswordRecovery(pba::IPasswordRecoveryView *view) override;
    kro::result_t StartLoginByToken(pba::ILoginByTokenView *view) override;
    kro::result_t StartOperatingSystem() override;

private:
    std::uint32_t ViewOptions() const;

    UnlockSession &m_unlockSession;
    LogicOptions m_options;
    PasswordLogin m_passwordLogin;
    PasswordRecovery m_recovery;
    TokenLogin m_tokenLogin;
    pba::IMainView *m_view = nullptr;
};

} // namespace host
