// SPDX-License-Identifier: Apache-2.0
#include "host/screen/password_recovery.h"

#include <algorithm>

#include "base/code_string.h"
#include "base/text.h"
#include "host/screen/error_messages.h"
#include "host/screen/guarded.h"
#include "pba/view.h"

namespace host {

using protocol::RecoveryOffer;
using protocol::RecoveryResult;

namespace {

// False when one of them is no line of a response.
bool ToRequest(const kro::vector_t<kro::string_t> &lines, protocol::RecoveryFinish *request)
{
    for (std::size_t row = 0; row < lines.Size(); ++row) {
        std::optional<base::Secret> code = base::NormaliseResponse(lines[row].View(), row);
        if (!code)
            return false;
        request->lines[row] = std::move(*code);
    }
    return true;
}

} // namespace

PasswordRecovery::PasswordRecovery(ServiceLink &service, PasswordLogin &passwordLogin, const Texts &texts)
    : m_service(service)
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
        return Begin();
    });
}

// In place of what is under way.
kro::result_t PasswordRecovery::Begin()
{
    Forget();
    const auto reply = m_service.Ask(protocol::RecoveryBegin{});
    if (!reply || m_service.HasEnded())
        return kro::kCancelled;
    m_underWay = reply->offer == RecoveryOffer::Ready;
    if (m_underWay)
        return m_view->StartEntropyCollection(reply->entropyBytes);
    m_texts.Show(m_view, reply->offer == RecoveryOffer::None ? kNoPasswordRecovery : kRecoveryCannotSave);
    return kro::kOk;
}

void PasswordRecovery::Forget()
{
    m_underWay = false;
    m_hasChallenge = false;
    m_acceptedLines = 0;
    m_accepted.reset();
}

kro::result_t PasswordRecovery::SetEntropy(const kro::vector_t<std::uint8_t> &entropy)
{
    if (!m_underWay)
        return kro::kInvalidState;
    return Guarded([&] {
        protocol::RecoveryEntropy request{base::Secret(protocol::kMaxEntropy)};
        for (const std::uint8_t byte : entropy)
            request.bytes.Append(static_cast<char>(byte)); // whatever is beyond what was asked for is dropped
        const auto reply = m_service.Ask(request);
        return reply && !m_service.HasEnded() ? ShowChallenge(*reply) : kro::kCancelled;
    });
}

kro::result_t PasswordRecovery::ShowChallenge(const protocol::RecoveryEntropyReply &reply)
{
    m_hasChallenge = !reply.challenge.empty();
    if (!m_hasChallenge)
        return kro::kInvalidState;
    kro::vector_t<kro::string_t> strings;
    for (const protocol::CodeLine &line : reply.challenge)
        strings.PushBack(kro::string_t(line.text));
    return m_view->ShowChallenge(strings);
}

// Anything but kFalse would let the line pass, a failure as well.
kro::result_t PasswordRecovery::CheckResponseLine(const kro::string_t &line)
{
    const kro::result_t result = Guarded([&] {
        return m_hasChallenge && m_acceptedLines < protocol::kResponseLines &&
                       base::NormaliseResponse(line.View(), m_acceptedLines)
                   ? kro::kOk
                   : kro::kFalse;
    });
    return result == kro::kOk ? kro::kOk : kro::kFalse;
}

kro::result_t PasswordRecovery::CheckResponse(const kro::vector_t<kro::string_t> &lines, bool *complete,
                                              bool *valid)
{
    return Guarded([&] {
        *complete = *valid = false;
        m_acceptedLines = 0;
        protocol::RecoveryFinish request;
        if (!m_hasChallenge || lines.Size() > protocol::kResponseLines || !ToRequest(lines, &request))
            return kro::kOk;
        if (lines.Size() == protocol::kResponseLines)
            return Finish(request, complete, valid);
        m_acceptedLines = lines.Size();
        *valid = true;
        return kro::kOk;
    });
}

kro::result_t PasswordRecovery::Finish(const protocol::RecoveryFinish &request, bool *complete, bool *valid)
{
    const auto reply = m_service.AskBusy(request);
    if (!reply || m_service.HasEnded())
        return kro::kCancelled;
    *complete = true;
    *valid = reply->result == RecoveryResult::Accepted;
    m_accepted.reset();
    if (*valid)
        m_accepted = Person{std::u16string_view(base::ToUtf16(reply->domain)),
                            std::u16string_view(base::ToUtf16(reply->user))};
    Tell(*reply);
    return kro::kOk;
}

void PasswordRecovery::Tell(const protocol::RecoveryFinishReply &reply) const
{
    if (reply.result == RecoveryResult::UnknownUser)
        m_texts.Show(m_view, kRecoveryUnknownUser);
    else if (reply.result == RecoveryResult::RejectedTooOften)
        m_texts.Show(m_view, kRecoveryRejectedTooOften);
    else if (reply.result == RecoveryResult::Failed)
        m_texts.Show(m_view, MessageFor(reply.error));
}

kro::result_t PasswordRecovery::GotoChangePassword()
{
    if (!m_accepted)
        return kro::kInvalidState;
    return Guarded([&] {
        pba::ILoginByPasswordView *view = m_mainView->GetLoginByPasswordView();
        if (!view)
            return kro::kUnexpected;
        m_passwordLogin.Attach(view); // no login may have happened
        return m_passwordLogin.RequireNewPassword(*m_accepted);
    });
}

kro::result_t PasswordRecovery::QuitRecovery()
{
    if (!m_mainView)
        return kro::kNotInitialized;
    return Guarded([&] {
        Forget();
        m_service.Ask(protocol::Forget{});
        return m_mainView->ShowInitialScreen();
    });
}

kro::result_t PasswordRecovery::RestartRecovery()
{
    return m_underWay ? Guarded([&] { return Begin(); }) : kro::kInvalidState;
}

} // namespace host
