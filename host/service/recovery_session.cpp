// SPDX-License-Identifier: Apache-2.0
#include "host/service/recovery_session.h"

#include "host/log.h"
#include "volume/luks/users.h"

namespace host {

using volume::Error;

namespace {

constexpr int kMaxRejections = 5; // far more than mistypings that the check digits let pass

} // namespace

RecoverySession::RecoverySession(UnlockSession &unlockSession)
    : m_unlockSession(unlockSession)
    , m_header(unlockSession.GetHeader())
{
}

RecoverySession::Beginning RecoverySession::Begin()
{
    End();
    m_unlockSession.LookAnew();
    std::optional<recovery::Found> found = recovery::Find(m_header);
    if (!found)
        return Beginning::NoRecovery;
    if (m_header.CheckWritable() != Error::None)
        return Beginning::CannotSave;
    m_found = std::move(found);
    return Beginning::Begun;
}

void RecoverySession::Restart()
{
    m_unlockSession.Forget();
    m_ephemeral.reset();
    m_acceptedLines = 0;
    m_rejections = 0;
}

void RecoverySession::End()
{
    Restart();
    m_found.reset();
}

recovery::ChallengeStrings RecoverySession::MakeChallenge(std::span<const std::uint8_t> entropy)
{
    m_ephemeral = recovery::MakeEphemeral(entropy);
    return recovery::EncodeChallenge(
        recovery::MakeChallenge(m_found->enrolment.identity, recovery::PublicKeyOf(*m_ephemeral)));
}

bool RecoverySession::IsNextLine(std::string_view line) const
{
    const auto code = m_ephemeral ? base::NormaliseCode(line) : std::nullopt;
    return code && recovery::IsResponseLine(code->View(), m_acceptedLines);
}

RecoverySession::Verdict RecoverySession::Check(std::span<const std::string_view> lines)
{
    m_acceptedLines = 0;
    if (!m_found || !m_ephemeral || lines.size() > recovery::kResponseLines)
        return {Answer::Wrong};
    recovery::ResponseLines codes;
    for (std::size_t row = 0; row < lines.size(); ++row) {
        auto code = base::NormaliseCode(lines[row]);
        if (!code || !recovery::IsResponseLine(code->View(), row))
            return {Answer::Wrong};
        codes[row] = std::move(*code);
    }
    if (lines.size() == recovery::kResponseLines)
        return Try(codes);
    m_acceptedLines = lines.size();
    return {Answer::Incomplete};
}

RecoverySession::Verdict RecoverySession::Try(const recovery::ResponseLines &lines)
{
    const auto response = recovery::Response::Open(*m_ephemeral, m_found->enrolment, lines);
    if (!response)
        return Reject(Error::WrongPassword);
    m_unlockSession.LookAnew();
    const std::optional<volume::UserName> name = response->FindUser(volume::UsersOf(m_header));
    base::Secret volumeKey;
    if (const Error error = OpenKeyslot(*response, name.has_value(), &volumeKey); error != Error::None)
        return Reject(error);
    if (!name) {
        Log(kLogErrors, "Recovery: the response is right, but names nobody here.");
        return {Answer::UnknownUser};
    }
    Log(kLogCalls, "Recovery: the response is right.");
    m_unlockSession.Recover(*name, std::move(volumeKey));
    return {Answer::Accepted};
}

// The keyslot decides; the tag only says for whom. But who has the right tag has the right secret, so that
// its use is noted before the keyslot opens: should the power go in between, the secret counts as seen.
Error RecoverySession::OpenKeyslot(const recovery::Response &response, bool hasTag, base::Secret *volumeKey)
{
    const std::optional<recovery::Found> now = recovery::Find(m_header);
    if (!now || now->enrolment.identity != m_found->enrolment.identity)
        return Error::WrongPassword; // renewed or removed since
    if (hasTag)
        NoteUse();
    const Error error = m_header.OpenKeyslot(now->enrolment.keyslots.front(),
                                             recovery::PassphraseOf(response.Secret()), volumeKey);
    if (error == Error::None && !hasTag)
        NoteUse();
    return error;
}

void RecoverySession::NoteUse()
{
    if (const Error error = recovery::MarkUsed(m_header, m_found->enrolment.identity); error != Error::None)
        Log(kLogErrors, std::string("Recovery: the use cannot be noted: ") + volume::Describe(error));
}

RecoverySession::Verdict RecoverySession::Reject(Error error)
{
    Log(kLogErrors, std::string("Recovery: response refused: ") + volume::Describe(error));
    if (error != Error::WrongPassword)
        return {Answer::Fault, error};
    if (++m_rejections < kMaxRejections)
        return {Answer::Rejected};
    m_ephemeral.reset();
    return {Answer::Void};
}

} // namespace host
