// SPDX-License-Identifier: Apache-2.0
#include "host/screen/token_login.h"

#include <algorithm>

#include "base/flag_scope.h"
#include "base/text.h"
#include "host/screen/error_messages.h"
#include "host/screen/guarded.h"
#include "host/screen/token_messages.h"

namespace host {
namespace {

using protocol::TokenError;
using protocol::TokenInfo;
using protocol::Tokens;

// The same tokens at the same places, as far as the list tells.
bool LookAlike(const Tokens &a, const Tokens &b)
{
    return std::equal(a.tokens.begin(), a.tokens.end(), b.tokens.begin(), b.tokens.end(),
                      [](const TokenInfo &one, const TokenInfo &other) {
                          return one.name == other.name && one.serial == other.serial &&
                                 one.pinPad == other.pinPad;
                      });
}

base::Secret ToSecret(std::string_view text)
{
    base::Secret secret(text.size());
    for (const char byte : text)
        secret.Append(byte);
    return secret;
}

} // namespace

TokenLogin::TokenLogin(ServiceLink &service, const Texts &texts)
    : m_service(service)
    , m_texts(texts)
{
}

void TokenLogin::Attach(pba::ILoginByTokenView *view)
{
    m_view = view;
    m_view->SetLogic(this);
}

// Those that are of no use are shown behind the others, so that a person learns why they do not serve.
Tokens TokenLogin::TokensOfScreen() const
{
    Tokens tokens = m_service.NewestTokens();
    if (std::none_of(tokens.tokens.begin(), tokens.tokens.end(), std::mem_fn(&TokenInfo::usable)))
        tokens.tokens.clear();
    return tokens;
}

bool TokenLogin::IsAnyUsable()
{
    m_screen = TokensOfScreen();
    return !m_screen.tokens.empty();
}

bool TokenLogin::HasScreenChanged() const
{
    return !LookAlike(m_screen, TokensOfScreen());
}

kro::result_t TokenLogin::Reserved()
{
    return kro::kNotSupported;
}

kro::string_t TokenLogin::ShownName(const TokenInfo &token) const
{
    if (!token.pinPad)
        return std::string_view(token.name);
    return std::string_view(base::ToUtf8(m_texts.Get(kPinPadName, base::ToUtf16(token.name)).View()));
}

kro::result_t TokenLogin::GetTokens(kro::vector_t<pba::TokenRecord> *tokens)
{
    return Guarded([&] {
        m_shown = TokensOfScreen();
        for (const TokenInfo &token : m_shown.tokens)
            tokens->PushBack({ShownName(token), std::string_view(token.serial)});
        // Should the last one have left since the screen was chosen, it is the wrong screen: it has changed.
        if (!m_shown.tokens.empty())
            m_screen = m_shown;
        return kro::kOk;
    });
}

kro::result_t TokenLogin::LoginByToken(std::int32_t index, const kro::string_t &pin)
{
    if (!m_view)
        return kro::kNotInitialized;
    if (m_underWay)
        return kro::kInvalidState;
    if (index < 0 || static_cast<std::size_t>(index) >= m_shown.tokens.size())
        return kro::kInvalidArgument;
    return Guarded([&] {
        const base::FlagScope underWay(m_underWay);
        return TryLogin(static_cast<std::uint8_t>(index), pin);
    });
}

// Who pulls a token out and plugs it in again has the same list as before, under another number.
kro::result_t TokenLogin::TryLogin(std::uint8_t index, const kro::string_t &pin)
{
    const Tokens now = TokensOfScreen();
    const std::uint32_t generation = LookAlike(now, m_shown) ? now.generation : m_shown.generation;
    const auto reply = m_service.AskBusy(protocol::TryToken{generation, index, ToSecret(pin.View())});
    if (m_service.HasEnded())
        return kro::kOk;
    if (!reply) // no token takes a PIN of that length
        return Refuse(MessageFor(TokenError::WrongPin));
    if (reply->volumeError != protocol::VolumeError::None)
        return Refuse(MessageFor(reply->volumeError));
    if (reply->tokenError == TokenError::Cancelled)
        return kro::kOk;
    return reply->tokenError == TokenError::None ? m_view->ShowLoggedIn()
                                                 : Refuse(MessageFor(reply->tokenError));
}

kro::result_t TokenLogin::Refuse(const MessageText &message)
{
    m_texts.Show(m_view, message);
    return kro::kOk;
}

} // namespace host
