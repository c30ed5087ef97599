// SPDX-License-Identifier: Apache-2.0
#include "host/screen/password_recovery.h"

#include <vector>

#include "host/screen/error_messages.h"
#include "host/screen/guarded.h"
#include "host/log.h"
#include "pba/view.h"
#include "host/screen/scopes.h"

namespace host {
namespace {

using Answer = RecoverySession::Answer;
using Beginning = RecoverySession::Beginning;

constexpr std::uint32_t kEntropyBytes = 32;

} // namespace

PasswordRecovery::PasswordRecovery(UnlockSession &unlockSession, PasswordLogin &passwordLogin,
                                   const Texts &texts)
    : m_unlockSession(unlockSession)
    , m_session(unlockSession)
    , m_passwordLogin(passwordLogin)
    , m_texts(texts)
{
}

kro::result_t PasswordRecovery::Start(pba::IPasswordRecoveryView *view, pba::IMainView *mainView)
{
    return Guarded([&] {
        m_view = view;
        m_mainView = mainView;
        view->SetLogic(this);
        const Beginning beginning = m_session.Begin();
        if (beginning == Beginning::Begun)
            return view->StartEntropyCollection(kEntropyBytes);
        m_texts.Show(view, beginning == Beginning::NoRecovery ? kNoPasswordRecovery : kRecoveryCannotSave);
        return kro::kOk;
    });
}

kro::result_t PasswordRecovery::SetEntropy(const kro::vector_t<std::uint8_t> &entropy)
{
    if (!m_session.IsUnderWay())
        return kro::kInvalidState;
    return Guarded([&] {
        kro::vector_t<kro::string_t> strings;
        for (const std::string &string : m_session.MakeChallenge({entropy.Data(), entropy.Size()}))
            strings.PushBack(kro::string_t(string));
        Log(kLogCalls, "Recovery: the challenge is made.");
        return m_view->ShowChallenge(strings);
    });
}

// Anything but kFalse would let the line pass, a failure as well.
kro::result_t PasswordRecovery::CheckResponseLine(const kro::string_t &line)
{
    const kro::result_t result =
        Guarded([&] { return m_session.IsNextLine(line.View()) ? kro::kOk : kro::kFalse; });
    return result == kro::kOk ? kro::kOk : kro::kFalse;
}

kro::result_t PasswordRecovery::CheckResponse(const kro::vector_t<kro::string_t> &lines, bool *complete,
                                              bool *valid)
{
    return Guarded([&] {
        std::vector<std::string_view> texts;
        for (const kro::string_t &line : lines)
            texts.push_back(line.View());
        RecoverySession::Verdict verdict{Answer::Wrong};
        {
            const BusyScope busy;
            verdict = m_session.Check(texts);
        }
        *complete = verdict.answer != Answer::Wrong && verdict.answer != Answer::Incomplete;
        *valid = verdict.answer == Answer::Incomplete || verdict.answer == Answer::Accepted;
        Tell(verdict);
        return kro::kOk;
    });
}

void PasswordRecovery::Tell(const RecoverySession::Verdict &verdict) const
{
    if (verdict.answer == Answer::UnknownUser)
        m_texts.Show(m_view, kRecoveryUnknownUser);
    else if (verdict.answer == Answer::Void)
        m_texts.Show(m_view, kRecoveryRejectedTooOften);
    else if (verdict.answer == Answer::Fault)
        m_texts.Show(m_view, MessageFor(verdict.error));
}

kro::result_t PasswordRecovery::GotoChangePassword()
{
    if (!m_unlockSession.HasRecovered())
        return kro::kInvalidState;
    return Guarded([&] {
        pba::ILoginByPasswordView *view = m_mainView->GetLoginByPasswordView();
        if (!view)
            return kro::kUnexpected;
        m_passwordLogin.Attach(view); // no login may have happened
        return m_passwordLogin.RequireNewPassword(kRecoveryNewPassword);
    });
}

kro::result_t PasswordRecovery::QuitRecovery()
{
    if (!m_mainView)
        return kro::kNotInitialized;
    m_session.End();
    return m_mainView->ShowInitialScreen();
}

kro::result_t PasswordRecovery::RestartRecovery()
{
    if (!m_session.IsUnderWay())
        return kro::kInvalidState;
    return Guarded([&] {
        m_session.Restart();
        return m_view->StartEntropyCollection(kEntropyBytes);
    });
}

} // namespace host
