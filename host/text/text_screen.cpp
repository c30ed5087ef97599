// SPDX-License-Identifier: Apache-2.0
#include "host/text/text_screen.h"

#include <sys/random.h>

#include "base/code_string.h"
#include "host/screen/error_messages.h"
#include "host/screen/prompts.h"

namespace text {

using base::Secret;
using protocol::VolumeError;

TextScreen::TextScreen(protocol::Client &client, const Terminal &terminal, const host::Catalogue &catalogue)
    : m_client(client)
    , m_terminal(terminal)
    , m_catalogue(catalogue)
{
}

bool TextScreen::Run()
{
    const auto hello = m_client.Ask(protocol::Hello{});
    Next next = hello && hello->testBoot ? Next::Start : Next::Login;
    while (next != Next::End && m_client.IsOpen() && !m_client.StopRequested()) {
        if (next == Next::Login)
            next = LogIn();
        else
            next = next == Next::Start ? Start() : ReplacePassword();
    }
    return m_started;
}

template <typename Request>
auto TextScreen::AskService(const Request &request)
{
    SayLine(m_catalogue.Get(host::kPleaseWait));
    auto reply = m_client.Ask(request);
    m_terminal.Discard();
    return reply;
}

TextScreen::Next TextScreen::LogIn()
{
    const auto user = m_terminal.Ask(m_catalogue.Get(host::kUserPrompt), Echo::On);
    if (!user)
        return Next::End;
    if (user->View() == "?")
        return Recover();
    if (user->IsEmpty())
        return Next::Login;
    const auto domain = m_terminal.Ask(m_catalogue.Get(host::kDomainPrompt), Echo::On);
    auto password = domain ? m_terminal.Ask(m_catalogue.Get(host::kPasswordPrompt), Echo::Off) : std::nullopt;
    if (!password)
        return Next::End;
    return TryPassword(std::string(domain->View()), std::string(user->View()), std::move(*password));
}

// What cannot be sent, a name of a thousand letters or what is no text, is nobody's.
TextScreen::Next TextScreen::TryPassword(std::string domain, std::string user, Secret password)
{
    const auto reply =
        AskService(protocol::TryPassword{std::move(domain), std::move(user), std::move(password)});
    if (reply)
        return AfterLogin(*reply);
    if (m_client.IsOpen())
        Say(host::kWrongPassword);
    return Next::Login;
}

TextScreen::Next TextScreen::AfterLogin(const protocol::TryPasswordReply &reply)
{
    switch (reply.result) {
    case protocol::LoginResult::Opened:
        if (reply.mustReplace)
            Say(host::kPasswordExpired);
        else if (reply.hasExpired)
            Say(host::kExpiredPasswordStays);
        return reply.mustReplace ? Next::NewPassword : Next::Start;
    case protocol::LoginResult::Wait:
        SayLine(m_catalogue.Get(host::kTooManyFailures.text, std::to_string(reply.secondsToWait)));
        return m_terminal.Wait(std::chrono::seconds(reply.secondsToWait)) ? Next::Login : Next::End;
    case protocol::LoginResult::Wrong:
        Say(host::kWrongPassword);
        return Next::Login;
    case protocol::LoginResult::Failed:
        break;
    }
    Say(host::MessageFor(reply.error));
    return Next::Login;
}

TextScreen::Next TextScreen::ReplacePassword()
{
    auto password = m_terminal.Ask(m_catalogue.Get(host::kNewPasswordPrompt), Echo::Off);
    const auto again =
        password ? m_terminal.Ask(m_catalogue.Get(host::kAgainPrompt), Echo::Off) : std::nullopt;
    if (!again)
        return Next::End;
    if (password->View() != again->View()) {
        SayLine(m_catalogue.Get(host::kPasswordsDiffer));
        return Next::NewPassword;
    }
    const auto reply = AskService(protocol::ReplacePassword{std::move(*password)});
    return reply ? AfterReplacing(*reply) : Next::NewPassword;
}

TextScreen::Next TextScreen::AfterReplacing(const protocol::ReplacePasswordReply &reply)
{
    if (reply.error == VolumeError::None)
        return Next::Start;
    const bool another = host::AnotherPasswordMayDo(reply.error);
    Say(another ? host::MessageFor(reply.error) : host::kPasswordNotSaved);
    if (another)
        return Next::NewPassword;
    return reply.letIn ? Next::Start : Forget();
}

TextScreen::Next TextScreen::Recover()
{
    const auto reply = m_client.Ask(protocol::RecoveryBegin{});
    if (reply && reply->offer == protocol::RecoveryOffer::Ready)
        return ShowChallenge(reply->entropyBytes);
    if (reply)
        Say(reply->offer == protocol::RecoveryOffer::None ? host::kNoPasswordRecovery
                                                          : host::kRecoveryCannotSave);
    return Next::Login;
}

// The kernel's random numbers do, where nobody moves a pointer: the service adds its own.
TextScreen::Next TextScreen::ShowChallenge(std::size_t entropyBytes)
{
    Secret bytes(protocol::kMaxEntropy);
    bytes.SetSize(std::min(entropyBytes, bytes.Capacity()));
    if (getrandom(bytes.Buffer(), bytes.Size(), 0) != static_cast<ssize_t>(bytes.Size()))
        return Forget();
    const auto reply = m_client.Ask(protocol::RecoveryEntropy{std::move(bytes)});
    if (!reply || reply->challenge.empty())
        return Forget();
    SayLine(m_catalogue.Get(host::kReadOut));
    for (const protocol::CodeLine &line : reply->challenge)
        SayLine("  " + base::InGroups(line.text));
    return AskResponse();
}

// Empty to give up; nothing when the conversation has ended.
std::optional<Secret> TextScreen::AskCodeLine(std::size_t row)
{
    const std::string prompt = m_catalogue.Get(host::kResponsePrompt, std::to_string(row + 1));
    while (auto line = m_terminal.Ask(prompt, Echo::On)) {
        if (line->IsEmpty())
            return line;
        if (auto code = base::NormaliseResponse(line->View(), row))
            return code;
        SayLine(m_catalogue.Get(host::kLineWrong));
    }
    return std::nullopt;
}

TextScreen::Next TextScreen::AskResponse()
{
    protocol::RecoveryFinish response;
    for (std::size_t row = 0; row < protocol::kResponseLines; ++row) {
        auto line = AskCodeLine(row);
        if (!line)
            return Next::End;
        if (line->IsEmpty())
            return Forget();
        response.lines[row] = std::move(*line);
    }
    const auto reply = AskService(response);
    return reply ? AfterResponse(*reply) : Forget();
}

TextScreen::Next TextScreen::AfterResponse(const protocol::RecoveryFinishReply &reply)
{
    switch (reply.result) {
    case protocol::RecoveryResult::Accepted:
        Say(host::kRecoveryNewPassword);
        return Next::NewPassword;
    case protocol::RecoveryResult::RejectedTooOften:
        Say(host::kRecoveryRejectedTooOften);
        return Forget();
    case protocol::RecoveryResult::Rejected:
        SayLine(m_catalogue.Get(host::kResponseRejected));
        break;
    case protocol::RecoveryResult::UnknownUser:
        Say(host::kRecoveryUnknownUser);
        break;
    case protocol::RecoveryResult::Failed:
        Say(host::MessageFor(reply.error));
        break;
    }
    return AskResponse();
}

TextScreen::Next TextScreen::Forget()
{
    m_client.Ask(protocol::Forget{});
    return Next::Login;
}

TextScreen::Next TextScreen::Start()
{
    const auto reply = m_client.Ask(protocol::Start{});
    const bool testBoot = reply && reply->result == protocol::StartResult::TestBootEnded;
    m_started = testBoot || (reply && reply->result == protocol::StartResult::Started);
    if (m_started)
        SayLine(m_catalogue.Get(testBoot ? host::kTestBootEnds : host::kSystemStarts));
    else
        Say(host::kVolumeUnreadable);
    return m_started ? Next::End : Next::Login;
}

} // namespace text
