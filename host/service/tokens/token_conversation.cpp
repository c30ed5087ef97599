// SPDX-License-Identifier: Apache-2.0
#include "host/service/tokens/token_conversation.h"

#include "host/token_process/wire.h"

namespace host {

using token::Error;

namespace {

// Of one enrolment. Each costs a derivation, and a module might have any number.
constexpr int kMaxCandidates = 16;

} // namespace

TokenConversation::TokenConversation(TokenModule &module, const std::atomic<bool> &interrupted)
    : m_module(module)
    , m_interrupted(interrupted)
    , m_turn(std::in_place, module)
{
}

TokenConversation::~TokenConversation()
{
    if (m_loggedIn)
        m_turn->Ask(protocol::LogOut{}, m_turn->Options().EndTimeout());
    m_turn.reset();
    m_module.LookAnew();
}

template <typename Request>
std::optional<typename Request::Reply> TokenConversation::Ask(const Request &request)
{
    return m_interrupted ? std::nullopt : m_turn->Ask(request, m_turn->Options().timeout);
}

std::vector<token::Description> TokenConversation::List()
{
    const auto reply = m_interrupted ? std::nullopt : m_turn->List();
    return reply ? token_process::FromMessage(*reply) : std::vector<token::Description>();
}

Error TokenConversation::LogIn(const token::Description &token, const base::Secret &pin)
{
    protocol::LogIn request{token_process::ToMessage(token), base::CopyOf(pin.View())};
    const auto reply = Ask(request);
    m_loggedIn = reply && reply->error == protocol::TokenError::None;
    return reply ? token_process::FromMessage(reply->error) : Error::Removed;
}

// An enrolment that does not fit into a question is none that any token could serve.
template <typename Request>
Error TokenConversation::AskForCandidate(const Request &request, base::Secret *passphrase)
{
    auto reply = Ask(request);
    if (!reply)
        return protocol::Encode(request) ? Error::Removed : Error::NoKey;
    *passphrase = std::move(reply->passphrase);
    return token_process::FromMessage(reply->error);
}

Error TokenConversation::Unwrap(const token::Enrolment &enrolment, const token::Opens &opens)
{
    base::Secret passphrase;
    Error error = AskForCandidate(protocol::Unwrap{enrolment.uri, base::CopyOf(enrolment.key)}, &passphrase);
    for (int tried = 1; error == Error::None && !opens(passphrase); ++tried)
        error =
            tried < kMaxCandidates ? AskForCandidate(protocol::UnwrapByNextKey{}, &passphrase) : Error::NoKey;
    return error;
}

} // namespace host
