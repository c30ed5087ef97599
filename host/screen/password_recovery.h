// SPDX-License-Identifier: Apache-2.0
// The reset of a forgotten password: challenge and response, then a new password for the user whom the
// administrator has named.
#pragma once

#include "host/screen/password_login.h"
#include "pba/password_recovery.h"
#include "host/service/recovery_session.h"

namespace host {

class PasswordRecovery final : public pba::IPasswordRecoveryLogic
{
public:
    PasswordRecovery(UnlockSession &unlockSession, PasswordLogin &passwordLogin, const Texts &texts);

    // A volume without recovery, or one that cannot be written, is told in a message: the buttons that lead
    // here are always there.
    kro::result_t Start(pba::IPasswordRecoveryView *view, pba::IMainView *mainView);

    kro::result_t SetEntropy(const kro::vector_t<std::uint8_t> &entropy) override;
    // The row is not told: it is the one behind the lines that were last called valid and incomplete.
    kro::result_t CheckResponseLine(const kro::string_t &line) override;
    // After some rejected responses the challenge is void, and only RestartRecovery leads on.
    kro::result_t CheckResponse(const kro::vector_t<kro::string_t> &lines, bool *complete,
                                bool *valid) override;
    kro::result_t GotoChangePassword() override;
    bool IsRecoveryInProgress() override { return m_session.IsUnderWay(); }
    kro::result_t QuitRecovery() override;
    kro::result_t RestartRecovery() override;

private:
    void Tell(const RecoverySession::Verdict &verdict) const;

    UnlockSession &m_unlockSession;
    RecoverySession m_session;
    PasswordLogin &m_passwordLogin;
    const Texts &m_texts;
    pba::IPasswordRecoveryView *m_view = nullptr;
    pba::IMainView *m_mainView = nullptr;
};

} // namespace host
