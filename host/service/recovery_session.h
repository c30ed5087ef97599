// SPDX-License-Identifier: Apache-2.0
// The recovery of a forgotten password as far as it is decided: one challenge at a time, the responses to it,
// and whose password may be set. Nothing of it is shown.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "host/service/unlock_session.h"
#include "volume/recovery/challenge.h"
#include "volume/recovery/response.h"
#include "volume/recovery/volume_recovery.h"

namespace host {

class RecoverySession
{
public:
    enum class Beginning {
        Begun,
        NoRecovery,
        CannotSave, // the new password: better said now than after the call to the administrator
    };
    enum class Answer {
        Wrong,      // no lines of any response
        Incomplete, // right so far
        Accepted,   // UnlockSession knows whose password may be set
        Rejected,
        Void, // rejected too often: no response to this challenge is accepted any more
        UnknownUser,
        Fault, // of the volume
    };
    struct Verdict
    {
        Answer answer;
        volume::Error error = volume::Error::None; // of a fault
    };

    explicit RecoverySession(UnlockSession &unlockSession);

    // In place of one that is under way.
    Beginning Begin();
    // What was accepted before, or accepted so far, counts no longer.
    void Restart();
    void End();
    bool IsUnderWay() const { return m_found.has_value(); }
    // Only while it is under way. The former one is void.
    recovery::ChallengeStrings MakeChallenge(std::span<const std::uint8_t> entropy);
    // Whether it can be the line behind those that were last called incomplete.
    bool IsNextLine(std::string_view line) const;
    Verdict Check(std::span<const std::string_view> lines);

private:
    Verdict Try(const recovery::ResponseLines &lines);
    volume::Error OpenKeyslot(const recovery::Response &response, bool hasTag, base::Secret *volumeKey);
    void NoteUse();
    Verdict Reject(volume::Error error);

    UnlockSession &m_unlockSession;
    volume::Header &m_header;
    std::optional<recovery::Found> m_found;
    std::optional<recovery::SecretKey> m_ephemeral; // while a challenge is valid
    std::size_t m_acceptedLines = 0;
    int m_rejections = 0;
};

} // namespace host
