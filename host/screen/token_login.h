// SPDX-License-Identifier: Apache-2.0
// The pages of the login by token and PIN. The service tells which tokens are connected; the view is answered
// from what was told last, and never waits for a card.
#pragma once

#include "host/screen/service_link.h"
#include "host/screen/texts.h"
#include "pba/login_by_token.h"

namespace host {

class TokenLogin final : public pba::ILoginByTokenLogic
{
public:
    TokenLogin(ServiceLink &service, const Texts &texts);

    // The view of the login page; it gets this object as its logic.
    void Attach(pba::ILoginByTokenView *view);

    // Whether a token is there that can log on to this volume. Others must not hide the password page.
    bool IsAnyUsable();
    // Whether the screen would look different from what it was made from. Tokens that are of no use here
    // change nothing while they are alone.
    bool HasScreenChanged() const;

    kro::result_t Reserved() override;
    kro::result_t GetTokens(kro::vector_t<pba::TokenRecord> *tokens) override;
    // Whatever the token does wrong is no failure: a message, and the person tries again. kInvalidState while
    // a login is under way, since its messages run a nested event loop. The PIN goes to the token that was
    // shown at this place, or to none.
    kro::result_t LoginByToken(std::int32_t index, const kro::string_t &pin) override;

private:
    protocol::Tokens TokensOfScreen() const;
    kro::string_t ShownName(const protocol::TokenInfo &token) const;
    kro::result_t TryLogin(std::uint8_t index, const kro::string_t &pin);
    kro::result_t Refuse(const MessageText &message);

    ServiceLink &m_service;
    const Texts &m_texts;
    pba::ILoginByTokenView *m_view = nullptr;
    // What the screen was made from, and what was shown last; empty where none was usable.
    protocol::Tokens m_screen;
    protocol::Tokens m_shown;
    bool m_underWay = false;
};

} // namespace host
