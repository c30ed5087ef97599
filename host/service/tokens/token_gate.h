// SPDX-License-Identifier: Apache-2.0
// Lets in who has a token and its PIN: the key on the token brings back the passphrase of a keyslot.
#pragma once

#include <atomic>
#include <mutex>

#include "host/service/tokens/token_conversation.h"
#include "host/service/tokens/token_list.h"
#include "host/service/unlock_session.h"

namespace host {

class TokenGate
{
public:
    struct Outcome
    {
        token::Error error = token::Error::Removed;
        volume::Error volumeError = volume::Error::None; // goes before the other one
    };

    // The session must outlive this object. Throws std::system_error.
    TokenGate(UnlockSession &unlockSession, TokenOptions options);

    TokenList &List() { return m_list; }
    // Whether the volume knows any token. A list of those that are connected follows.
    bool Offers();
    // The PIN goes to the token that stood at this place of that list, or to none. What an earlier login
    // opened is forgotten.
    Outcome Try(std::uint32_t generation, std::size_t index, const base::Secret &pin);
    // Ends a login that is under way as if the token had been removed, and each further one until Resume. Any
    // thread may call it.
    void Interrupt();
    void Resume() { m_interrupted = false; }

private:
    Outcome Try(const ModuleToken &listed, const base::Secret &pin);
    Outcome Open(TokenConversation *conversation, const token::Description &token, const base::Secret &pin);
    void NoteModule(TokenModule *module);

    UnlockSession &m_unlockSession;
    TokenList m_list;
    std::atomic<bool> m_interrupted = false;
    std::mutex m_mutex;
    TokenModule *m_asked = nullptr; // while a login is under way
};

} // namespace host
