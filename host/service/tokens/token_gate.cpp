// SPDX-License-Identifier: Apache-2.0
#include "host/service/tokens/token_gate.h"

#include <algorithm>

namespace host {

using token::Description;
using token::Enrolment;
using token::Error;

namespace {

// Tokens that tell the same of themselves, now or when they were listed, are told apart by their slot.
const Description *FindAgain(const ModuleToken &listed, const std::vector<Description> &connected)
{
    const auto isLike = [&](const Description &candidate) { return candidate.IsSameAs(listed.token); };
    const bool alone = !listed.hasTwin && std::count_if(connected.begin(), connected.end(), isLike) == 1;
    const auto found = std::find_if(connected.begin(), connected.end(), [&](const Description &candidate) {
        return isLike(candidate) && (alone || candidate.Slot() == listed.token.Slot());
    });
    return found == connected.end() ? nullptr : &*found;
}

} // namespace

TokenGate::TokenGate(UnlockSession &unlockSession, TokenOptions options)
    : m_unlockSession(unlockSession)
    , m_list(std::move(options))
{
}

bool TokenGate::Offers()
{
    std::vector<Enrolment> enrolments = token::EnrolmentsOf(m_unlockSession.GetHeader());
    const bool any = !enrolments.empty();
    m_list.UseEnrolments(std::move(enrolments));
    return any;
}

TokenGate::Outcome TokenGate::Try(std::uint32_t generation, std::size_t index, const base::Secret &pin)
{
    m_unlockSession.Forget();
    m_unlockSession.LookAnew();
    Offers();
    const std::optional<ModuleToken> listed = m_list.Find(generation, index);
    if (!listed)
        return {};
    NoteModule(listed->module);
    const Outcome outcome = Try(*listed, pin);
    NoteModule(nullptr);
    return outcome;
}

TokenGate::Outcome TokenGate::Try(const ModuleToken &listed, const base::Secret &pin)
{
    TokenConversation conversation(*listed.module, m_interrupted);
    const std::vector<Description> connected = conversation.List();
    const Description *token = FindAgain(listed, connected);
    return token ? Open(&conversation, *token, pin) : Outcome{};
}

TokenGate::Outcome TokenGate::Open(TokenConversation *conversation, const Description &token,
                                   const base::Secret &pin)
{
    std::vector<Enrolment> enrolments = token::EnrolmentsOf(m_unlockSession.GetHeader());
    std::erase_if(enrolments, [&](const Enrolment &enrolment) { return !token.Matches(enrolment.uri); });
    if (enrolments.empty())
        return {Error::NotEnrolled};
    Outcome outcome{conversation->LogIn(token, pin)};
    if (outcome.error != Error::None)
        return outcome;
    for (const Enrolment &enrolment : enrolments) {
        outcome.error = conversation->Unwrap(enrolment, [&](const base::Secret &passphrase) {
            const volume::Error opened = m_unlockSession.OpenKeyslots(enrolment.keyslots, passphrase);
            // What another key makes of it is wrong as a rule, and hides no fault of the volume.
            if (opened != volume::Error::WrongPassword)
                outcome.volumeError = opened;
            return opened == volume::Error::None;
        });
        if (outcome.error != Error::NoKey)
            break;
    }
    return outcome;
}

void TokenGate::NoteModule(TokenModule *module)
{
    const std::lock_guard lock(m_mutex);
    m_asked = module;
}

void TokenGate::Interrupt()
{
    const std::lock_guard lock(m_mutex);
    m_interrupted = true;
    if (m_asked)
        m_asked->KillProcess();
}

} // namespace host
