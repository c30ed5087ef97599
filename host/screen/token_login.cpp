// SPDX-License-Identifier: Apache-2.0
#include "host/screen/token_login.h"

#include <algorithm>

#include "host/screen/error_messages.h"
#include "host/screen/guarded.h"
#include "host/log.h"
#include "host/screen/scopes.h"
#include "host/service/stop_signals.h"
#include "host/screen/token_messages.h"
#include "base/flag_scope.h"
#include "base/text.h"

namespace host {
namespace {

using token::Error;
using token::Token;

std::string Replace(std::string text, std::string_view mark, const std::string &by)
{
    const std::size_t at = text.find(mark);
    return at == std::string::npos ? text : text.replace(at, mark.size(), by);
}

// The same tokens at the same places, in the same state as far as the list tells.
bool LookAlike(const std::vector<Token> &a, const std::vector<Token> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Token &one, const Token &other) {
        return one.IsSameAs(other) && one.HasPinPad() == other.HasPinPad();
    });
}

} // namespace

TokenLogin::TokenLogin(UnlockSession &unlockSession, const Texts &texts, std::string modulePath)
    : m_unlockSession(unlockSession)
    , m_texts(texts)
    , m_modules(std::move(modulePath))
{
}

void TokenLogin::Attach(pba::ILoginByTokenView *view)
{
    m_view = view;
    m_view->SetLogic(this);
}

bool TokenLogin::IsOffered() const
{
    return !token::EnrolmentsOf(m_unlockSession.GetVolume()).empty();
}

std::vector<token::Enrolment> TokenLogin::EnrolmentsFor(const Token &token) const
{
    std::vector<token::Enrolment> enrolments = token::EnrolmentsOf(m_unlockSession.GetVolume());
    std::erase_if(enrolments,
                  [&](const token::Enrolment &enrolment) { return !token.Matches(enrolment.uri); });
    return enrolments;
}

bool TokenLogin::IsUsable(const Token &token) const
{
    return !token.IsPinLocked() && !EnrolmentsFor(token).empty();
}

// In the order of their names, which does not depend on where they are plugged in: the usable ones first, and
// the others behind them, so that a person learns why they do not serve.
std::vector<Token> TokenLogin::TokensOfScreen()
{
    std::vector<Token> tokens = m_modules.Connected();
    if (!m_modules.AreLoaded())
        Log(kLogErrors, "No PKCS#11 module can be loaded: there are no tokens.");
    std::sort(tokens.begin(), tokens.end(), [](const Token &a, const Token &b) {
        return std::pair(a.Label(), a.Serial()) < std::pair(b.Label(), b.Serial());
    });
    const auto others = std::stable_partition(tokens.begin(), tokens.end(),
                                              [this](const Token &token) { return IsUsable(token); });
    if (others == tokens.begin())
        tokens.clear();
    return tokens;
}

bool TokenLogin::IsAnyUsable()
{
    m_screen = TokensOfScreen();
    return !m_screen.empty();
}

bool TokenLogin::HasScreenChanged()
{
    return !LookAlike(m_screen, TokensOfScreen());
}

kro::result_t TokenLogin::Reserved()
{
    return kro::kNotSupported;
}

std::vector<std::string> TokenLogin::Names(const std::vector<Token> &tokens) const
{
    std::vector<std::string> names = token::DisplayNames({tokens.begin(), tokens.end()});
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (tokens[i].HasPinPad())
            names[i] = Replace(base::ToUtf8(m_texts.Get(kPinPadName).View()), "%1", names[i]);
    }
    return names;
}

kro::result_t TokenLogin::GetTokens(kro::vector_t<pba::TokenRecord> *tokens)
{
    return Guarded([&] {
        std::vector<Token> shown = TokensOfScreen();
        const std::vector<std::string> names = Names(shown);
        for (std::size_t i = 0; i < names.size(); ++i)
            tokens->PushBack({std::string_view(names[i]), std::string_view(shown[i].Serial())});
        // Should the last one have left since the screen was chosen, it is the wrong screen: it has changed.
        if (!shown.empty())
            m_screen = shown;
        m_shown = std::move(shown);
        return kro::kOk;
    });
}

kro::result_t TokenLogin::LoginByToken(std::int32_t index, const kro::string_t &pin)
{
    if (!m_view)
        return kro::kNotInitialized;
    if (m_underWay)
        return kro::kInvalidState;
    if (index < 0 || static_cast<std::size_t>(index) >= m_shown.size())
        return kro::kInvalidArgument;
    return Guarded([&] {
        const base::FlagScope underWay(m_underWay);
        return TryLogin(m_shown[index], pin.View());
    });
}

// Tokens that tell the same of themselves, now or when they were shown, are told apart by their slot.
const Token *TokenLogin::FindAgain(const Token &shown, const std::vector<Token> &connected) const
{
    const auto isLike = [&](const Token &candidate) { return candidate.IsSameAs(shown); };
    const bool alone = std::count_if(connected.begin(), connected.end(), isLike) == 1 &&
                       std::count_if(m_shown.begin(), m_shown.end(), isLike) == 1;
    const auto found = std::find_if(connected.begin(), connected.end(), [&](const Token &candidate) {
        return isLike(candidate) && (alone || candidate.Slot() == shown.Slot());
    });
    return found == connected.end() ? nullptr : &*found;
}

kro::result_t TokenLogin::TryLogin(const Token &shown, std::string_view pin)
{
    Error error = Error::Removed;
    volume::Error volumeError = volume::Error::None;
    {
        const BusyScope busy;
        m_unlockSession.Forget();
        m_unlockSession.LookAnew();
        const std::vector<Token> connected = m_modules.Connected();
        if (const Token *token = FindAgain(shown, connected))
            error = Open(*token, pin, &volumeError);
    }
    // Who ended the program meanwhile does not want the system to start.
    if (StopRequested())
        return kro::kOk;
    if (volumeError != volume::Error::None)
        return Refuse(volumeError);
    if (error != Error::None)
        return Refuse(error);
    Log(kLogCalls, "Login by token: the keyslot is open.");
    return m_view->ShowLoggedIn();
}

Error TokenLogin::Open(const Token &token, std::string_view pin, volume::Error *volumeError)
{
    const std::vector<token::Enrolment> enrolments = EnrolmentsFor(token);
    if (enrolments.empty())
        return Error::NotEnrolled;
    token::Session session(token, pin);
    Error error = session.Login();
    if (error != Error::None)
        return error;
    for (const token::Enrolment &enrolment : enrolments) {
        error = token::Unwrap(session, enrolment, [&](const base::Secret &passphrase) {
            const volume::Error opened = m_unlockSession.OpenKeyslots(enrolment.keyslots, passphrase);
            // What another key makes of it is wrong as a rule, and hides no fault of the volume.
            if (opened != volume::Error::WrongPassword)
                *volumeError = opened;
            return opened == volume::Error::None;
        });
        if (error != Error::NoKey)
            break;
    }
    return error;
}

kro::result_t TokenLogin::Refuse(Error error)
{
    Log(kLogCalls, std::string("Login by token refused: ") + token::Describe(error));
    if (error != Error::Cancelled)
        m_texts.Show(m_view, MessageFor(error));
    return kro::kOk;
}

kro::result_t TokenLogin::Refuse(volume::Error error)
{
    Log(kLogErrors, std::string("Login by token refused: ") + volume::Describe(error));
    m_texts.Show(m_view, MessageFor(error));
    return kro::kOk;
}

} // namespace host
