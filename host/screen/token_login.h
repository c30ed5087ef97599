// SPDX-License-Identifier: Apache-2.0
// Login by token and PIN: the key on the token brings back the passphrase of a keyslot.
//
// Tokens are looked for anew with every question, since they come and go; no message is shown for it, and a
// service that does not answer has none.
#pragma once

#include <string>
#include <vector>

#include "host/service/unlock_session.h"
#include "pba/login_by_token.h"
#include "host/screen/texts.h"
#include "volume/token/enrolment.h"
#include "volume/token/modules.h"

namespace host {

class TokenLogin final : public pba::ILoginByTokenLogic
{
public:
    // `modulePath` may be empty: see token::Modules.
    TokenLogin(UnlockSession &unlockSession, const Texts &texts, std::string modulePath);

    // The view of the login page; it gets this object as its logic.
    void Attach(pba::ILoginByTokenView *view);

    // Whether any token was ever enrolled for the volume that can still open it.
    bool IsOffered() const;
    // Whether a token is there that can log on to this volume. Others must not hide the password page.
    bool IsAnyUsable();
    // Whether the screen would look different from what it was made from. Tokens that are of no use here
    // change nothing while they are alone.
    bool HasScreenChanged();

    kro::result_t Reserved() override;
    kro::result_t GetTokens(kro::vector_t<pba::TokenRecord> *tokens) override;
    // Whatever the token does wrong is no failure: a message, and the person tries again. kInvalidState while
    // a login is under way, since its messages run a nested event loop. The PIN goes to the token that was
    // shown at this place, or to none.
    kro::result_t LoginByToken(std::int32_t index, const kro::string_t &pin) override;

private:
    bool IsUsable(const token::Token &token) const;
    std::vector<token::Token> TokensOfScreen();
    std::vector<std::string> Names(const std::vector<token::Token> &tokens) const;
    const token::Token *FindAgain(const token::Token &shown,
                                  const std::vector<token::Token> &connected) const;
    std::vector<token::Enrolment> EnrolmentsFor(const token::Token &token) const;
    token::Error Open(const token::Token &token, std::string_view pin, volume::Error *volumeError);
    kro::result_t TryLogin(const token::Token &shown, std::string_view pin);
    kro::result_t Refuse(token::Error error);
    kro::result_t Refuse(volume::Error error);

    UnlockSession &m_unlockSession;
    const Texts &m_texts;
    token::Modules m_modules;
    pba::ILoginByTokenView *m_view = nullptr;
    // What the screen was made from, in its order; empty where none was usable.
    std::vector<token::Token> m_screen;
    std::vector<token::Token> m_shown;
    bool m_underWay = false;
};

} // namespace host
