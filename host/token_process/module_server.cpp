// SPDX-License-Identifier: Apache-2.0
#include "host/token_process/module_server.h"

#include <algorithm>

#include "host/token_process/wire.h"

namespace token_process {

using token::Error;

ModuleServer::ModuleServer(std::unique_ptr<protocol::Channel> channel, std::string modulePath)
    : m_channel(std::move(channel))
    , m_modules(std::move(modulePath))
{
}

void ModuleServer::Run()
{
    while (std::optional<protocol::TokenRequest> request = m_channel.Receive(std::nullopt))
        std::visit([this](auto &one) { m_channel.Reply(Do(one)); }, *request);
}

// A new list may load the module anew, which ends its sessions.
protocol::ListTokensReply ModuleServer::Do(const protocol::ListTokens &)
{
    m_conversation.reset();
    m_tokens = m_modules.Connected();
    return ToMessage(m_tokens, m_modules.AreLoaded());
}

protocol::LogInReply ModuleServer::Do(protocol::LogIn &request)
{
    m_conversation.reset();
    protocol::ListTokensReply wanted;
    wanted.tokens.push_back({.identity = request.token});
    const token::Description token = FromMessage(wanted).front();
    const auto found = std::find_if(m_tokens.begin(), m_tokens.end(), [&](const token::Token &candidate) {
        return candidate.Slot() == token.Slot() && candidate.IsSameAs(token);
    });
    if (found == m_tokens.end())
        return {protocol::TokenError::Removed};
    m_conversation.emplace(*found, std::move(request.pin));
    const Error error = m_conversation->session.Login();
    if (error != Error::None)
        m_conversation.reset();
    return {ToMessage(error)};
}

template <typename Reply>
Reply ModuleServer::Next()
{
    Reply reply;
    if (!m_conversation || !m_conversation->candidates)
        return reply;
    const Error error = m_conversation->candidates->Next(&reply.passphrase);
    reply.error = ToMessage(error);
    return reply;
}

protocol::Unwrap::Reply ModuleServer::Do(const protocol::Unwrap &request)
{
    if (m_conversation)
        m_conversation->candidates.emplace(
            m_conversation->session, token::Enrolment{request.uri, std::string(request.key.View()), {}});
    return Next<protocol::Unwrap::Reply>();
}

protocol::UnwrapByNextKey::Reply ModuleServer::Do(const protocol::UnwrapByNextKey &)
{
    return Next<protocol::UnwrapByNextKey::Reply>();
}

protocol::LogOutReply ModuleServer::Do(const protocol::LogOut &)
{
    m_conversation.reset();
    return {};
}

} // namespace token_process
