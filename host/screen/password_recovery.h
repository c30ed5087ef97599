// SPDX-License-Identifier: Apache-2.0
// The pages of the reset of a forgotten password: challenge and response, then a new password for the user
// whom the administrator has named. Which lines can be part of a response at all is known here, so that a
// slip of the ear is told before anybody is asked.
#pragma once

#include <optional>

#include "host/screen/password_login.h"
#include "pba/password_recovery.h"

namespace host {

class PasswordRecovery final : public pba::IPasswordRecoveryLogic
{
public:
    PasswordRecovery(ServiceLink &service, PasswordLogin &passwordLogin, const Texts &texts);

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
    bool IsRecoveryInProgress() override { return m_underWay; }
    kro::result_t QuitRecovery() override;
    kro::result_t RestartRecovery() override;

private:
    kro::result_t Begin();
    void Forget();
    kro::result_t ShowChallenge(const protocol::RecoveryEntropyReply &reply);
    kro::result_t Finish(const protocol::RecoveryFinish &request, bool *complete, bool *valid);
    void Tell(const protocol::RecoveryFinishReply &reply) const;

    ServiceLink &m_service;
    PasswordLogin &m_passwordLogin;
    const Texts &m_texts;
    pba::IPasswordRecoveryView *m_view = nullptr;
    pba::IMainView *m_mainView = nullptr;
    bool m_underWay = false;
    bool m_hasChallenge = false;
    std::size_t m_acceptedLines = 0;
    std::optional<Person> m_accepted; // whose password may be set
};

} // namespace host
