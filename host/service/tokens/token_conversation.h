// SPDX-License-Identifier: Apache-2.0
// A login at a module's token: question after question, while nobody else asks the module.
#pragma once

#include <atomic>

#include "host/service/tokens/token_module.h"
#include "volume/token/enrolment.h"

namespace host {

class TokenConversation
{
public:
    // Waits until the module has answered whom it is answering. From `interrupted` on nothing is asked.
    TokenConversation(TokenModule &module, const std::atomic<bool> &interrupted);
    // Logs out. The list is read anew: what a token says of its PIN may have changed.
    ~TokenConversation();
    TokenConversation(const TokenConversation &) = delete;
    TokenConversation &operator=(const TokenConversation &) = delete;

    // Those that are connected now. What does not answer has none.
    std::vector<token::Description> List();
    // The token is one of the list.
    [[nodiscard]] token::Error LogIn(const token::Description &token, const base::Secret &pin);
    // Until a candidate opens; NoKey when none does.
    [[nodiscard]] token::Error Unwrap(const token::Enrolment &enrolment, const token::Opens &opens);

private:
    template <typename Request>
    std::optional<typename Request::Reply> Ask(const Request &request);
    template <typename Request>
    token::Error AskForCandidate(const Request &request, base::Secret *passphrase);

    TokenModule &m_module;
    const std::atomic<bool> &m_interrupted;
    std::optional<TokenModule::Turn> m_turn;
    bool m_loggedIn = false;
};

} // namespace host
