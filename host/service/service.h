// SPDX-License-Identifier: Apache-2.0
// What a screen asks, answered by what is known here: which password was right, how often it was not, and
// what was asked for before. A screen that asks in another order, or for what it was not offered, gains
// nothing by it.
//
// A question may take as long as a derivation does. One thread at a time uses this object.
#pragma once

#include "host/protocol/messages.h"
#include "host/service/password_gate.h"
#include "host/service/recovery_session.h"
#include "host/service/tokens/token_gate.h"

namespace host {

class Service
{
public:
    // Both must outlive this object. Throws std::system_error.
    Service(UnlockSession &unlockSession, LoginThrottle &throttle, bool autologonAllowed,
            TokenOptions tokens = {});

    // The reply that belongs to the request. Where memory runs out it is the one that says so least: failed.
    protocol::AnyReply Answer(const protocol::Request &request);
    // Whoever asked is gone: what was opened counts no longer.
    void Forget();

    // The list for the screen; any thread may ask for it.
    TokenList &Tokens() { return m_tokens.List(); }
    // Nobody waits for the answer any more: where a token has to be waited for, it comes now. Any thread.
    void Interrupt() { m_tokens.Interrupt(); }

private:
    protocol::HelloReply Do(const protocol::Hello &);
    protocol::TryPasswordReply Do(const protocol::TryPassword &request);
    protocol::TryTokenReply Do(const protocol::TryToken &request);
    protocol::CheckReplaceableReply Do(const protocol::CheckReplaceable &);
    protocol::ReplacePasswordReply Do(const protocol::ReplacePassword &request);
    protocol::RecoveryBeginReply Do(const protocol::RecoveryBegin &);
    protocol::RecoveryEntropyReply Do(const protocol::RecoveryEntropy &request);
    protocol::RecoveryFinishReply Do(const protocol::RecoveryFinish &request);
    protocol::ForgetReply Do(const protocol::Forget &);
    protocol::StartReply Do(const protocol::Start &);

    UnlockSession &m_unlockSession;
    PasswordGate m_gate;
    RecoverySession m_recovery;
    TokenGate m_tokens;
    bool m_autologonAllowed;
};

} // namespace host
