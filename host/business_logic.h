// What the view asks this host at the start of each activity.
#pragma once

#include "password_login.h"
#include "pba/business_logic.h"

namespace host {

struct LogicOptions
{
    bool passwordLogin = true; // false also when the volume has no users: the view then says so
    bool autologonAllowed = false;
};

class BusinessLogic final : public pba::IBusinessLogic
{
public:
    BusinessLogic(OsStart &osStart, const Texts &texts, const LogicOptions &options);

    kro::result_t Init(pba::IMainView *view) override;
    kro::result_t UpdateConnectedTokens(bool *screenMustChange) override;
    kro::result_t CheckTokensConnected(bool *connected) override;
    kro::result_t StartLoginByPassword(pba::ILoginByPasswordView *view) override;
    kro::result_t StartPasswordRecovery(pba::IPasswordRecoveryView *view) override;
    kro::result_t StartLoginByToken(pba::ILoginByTokenView *view) override;
    kro::result_t StartOperatingSystem() override;

private:
    OsStart &m_osStart;
    const Texts &m_texts;
    LogicOptions m_options;
    PasswordLogin m_passwordLogin;
    pba::IMainView *m_view = nullptr;
};

} // namespace host
