// The reset of a forgotten password: challenge and response, then a new password for the user whom the
// administrator has named.
#pragma once

#include <optional>

#include "host/screen/password_login.h"
#include "pba/password_recovery.h"
#include "volume/recovery/response.h"
#include "volume/recovery/volume_recovery.h"

namespace host {

class PasswordRecovery final : public pba::IPasswordRecoveryLogic
{
public:
    PasswordRecovery(OsStart &osStart, PasswordLogin &passwordLogin, const Texts &texts);

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
    bool IsRecoveryInProgress() override { return m_found.has_value(); }
    kro::result_t QuitRecovery() override;
    kro::result_t RestartRecovery() override;

private:
    kro::result_t Begin();
    void End();
    bool TryResponse(const recovery::ResponseLines &lines);
    bool LetIn(const recovery::Response &response, volume::Secret volumeKey);
    void Reject(volume::Error error);

    volume::Volume &m_volume;
    OsStart &m_osStart;
    PasswordLogin &m_passwordLogin;
    const Texts &m_texts;
    pba::IPasswordRecoveryView *m_view = nullptr;
    pba::IMainView *m_mainView = nullptr;
    std::optional<recovery::Found> m_found;         // while a recovery is in progress
    std::optional<recovery::SecretKey> m_ephemeral; // while a challenge is valid
    std::size_t m_acceptedLines = 0;
    int m_rejections = 0;
};

} // namespace host
