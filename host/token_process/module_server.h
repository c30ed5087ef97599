// SPDX-License-Identifier: Apache-2.0
// Answers the service's questions with what one PKCS#11 module does.
#pragma once

#include <optional>

#include "host/protocol/answerer.h"
#include "host/protocol/token_messages.h"
#include "volume/token/enrolment.h"
#include "volume/token/modules.h"

namespace token_process {

class ModuleServer
{
public:
    // The module is loaded with the first question.
    ModuleServer(std::unique_ptr<protocol::Channel> channel, std::string modulePath);

    // Until the service closes the connection.
    void Run();

private:
    // One login. Members in the order in which they depend on each other.
    struct Conversation
    {
        Conversation(const token::Token &token, protocol::Secret typed)
            : pin(std::move(typed))
            , session(token, pin.View())
        {
        }
        protocol::Secret pin;
        token::Session session;
        std::optional<token::Candidates> candidates;
    };

    protocol::ListTokensReply Do(const protocol::ListTokens &);
    protocol::LogInReply Do(protocol::LogIn &request);
    protocol::Unwrap::Reply Do(const protocol::Unwrap &request);
    protocol::UnwrapByNextKey::Reply Do(const protocol::UnwrapByNextKey &);
    protocol::LogOutReply Do(const protocol::LogOut &);
    template <typename Reply>
    Reply Next();

    protocol::Answerer<protocol::TokenRequest> m_channel;
    token::Modules m_modules;
    std::vector<token::Token> m_tokens; // of the last list
    std::optional<Conversation> m_conversation;
};

} // namespace token_process
