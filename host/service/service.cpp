// SPDX-License-Identifier: Apache-2.0
#include "host/service/service.h"

#include <algorithm>
#include <limits>
#include <new>

#include "host/log.h"
#include "host/service/offered_ways.h"
#include "host/token_process/wire.h"
#include "volume/luks/policy.h"

namespace host {

using protocol::VolumeError;
using volume::Error;

namespace {

constexpr std::uint8_t kEntropyBytes = 32;
static_assert(kEntropyBytes <= protocol::kMaxEntropy);
static_assert(recovery::kResponseLines == protocol::kResponseLines);
static_assert(recovery::kChallengeStrings <= protocol::kMaxChallengeLines);

VolumeError ToTell(Error error)
{
    switch (error) {
    case Error::None:
    case Error::OldPasswordStays: // the new one counts
        return VolumeError::None;
    case Error::WrongPassword:
        return VolumeError::WrongPassword;
    case Error::OutOfMemory:
        return VolumeError::OutOfMemory;
    case Error::Vanished:
        return VolumeError::Vanished;
    case Error::PasswordTooShort:
        return VolumeError::PasswordTooShort;
    case Error::PasswordUnchanged:
        return VolumeError::PasswordUnchanged;
    case Error::Busy:
        return VolumeError::Busy;
    case Error::DiskFault:
        return VolumeError::DiskFault;
    case Error::NoUser:
    case Error::NoSpace:
    case Error::ReadOnly:
    case Error::Reencrypting:
    case Error::ForeignRequirement:
        return VolumeError::NotReplaceable;
    default:
        return VolumeError::Failed;
    }
}

// Of a change, for which no password was asked: whoever was not let in has none to replace.
VolumeError ToTellOfChange(Error error)
{
    return error == Error::WrongPassword ? VolumeError::NotReplaceable : ToTell(error);
}

protocol::RecoveryResult ToTell(RecoverySession::Answer answer)
{
    using protocol::RecoveryResult;
    switch (answer) {
    case RecoverySession::Answer::Accepted:
        return RecoveryResult::Accepted;
    case RecoverySession::Answer::Void:
        return RecoveryResult::RejectedTooOften;
    case RecoverySession::Answer::UnknownUser:
        return RecoveryResult::UnknownUser;
    case RecoverySession::Answer::Fault:
        return RecoveryResult::Failed;
    default:
        return RecoveryResult::Rejected;
    }
}

} // namespace

Service::Service(UnlockSession &unlockSession, LoginThrottle &throttle, bool autologonAllowed,
                 TokenOptions tokens)
    : m_unlockSession(unlockSession)
    , m_gate(unlockSession, throttle)
    , m_recovery(unlockSession)
    , m_tokens(unlockSession, std::move(tokens))
    , m_autologonAllowed(autologonAllowed)
{
    m_tokens.Offers(); // so that the modules are loaded beside the screen
}

protocol::AnyReply Service::Answer(const protocol::Request &request)
{
    return std::visit(
        [this]<typename Request>(const Request &one) -> protocol::AnyReply {
            try {
                return Do(one);
            } catch (const std::bad_alloc &) {
                Log(kLogErrors, "There is not enough memory to answer the screen.");
                return typename Request::Reply();
            }
        },
        request);
}

void Service::Forget()
{
    m_recovery.End();
}

// The automatic logon at most once, so that a wrong credentials file does not try for ever.
protocol::HelloReply Service::Do(const protocol::Hello &)
{
    Forget();
    m_unlockSession.LookAnew();
    protocol::HelloReply reply;
    m_tokens.Resume();
    reply.tokensOffered = m_tokens.Offers();
    if (reply.tokensOffered)
        Tokens().AwaitFirst();
    reply.passwordsOffered = OffersPasswords(m_unlockSession);
    reply.testBoot = m_unlockSession.IsTestBoot();
    reply.autologonAllowed = std::exchange(m_autologonAllowed, false);
    reply.leastPasswordLength = static_cast<std::uint16_t>(
        std::min<std::uint32_t>(volume::PolicyOf(m_unlockSession.GetHeader()).minimumLength,
                                std::numeric_limits<std::uint16_t>::max()));
    return reply;
}

protocol::TryPasswordReply Service::Do(const protocol::TryPassword &request)
{
    using protocol::LoginResult;
    const auto [error, secondsToWait] = m_gate.Try({request.domain, request.user}, request.password);
    if (secondsToWait > 0) {
        Log(kLogCalls, "Login refused: too many failures before.");
        return {LoginResult::Wait, secondsToWait};
    }
    if (error == Error::None) {
        Log(kLogCalls, "Login: the keyslot is open.");
        return {LoginResult::Opened, 0, VolumeError::None, m_unlockSession.MustReplacePassword(),
                m_unlockSession.HasExpired()};
    }
    const bool wrong = error == Error::WrongPassword;
    Log(wrong ? kLogCalls : kLogErrors, std::string("Login refused: ") + volume::Describe(error));
    return wrong ? protocol::TryPasswordReply{LoginResult::Wrong}
                 : protocol::TryPasswordReply{LoginResult::Failed, 0, ToTell(error)};
}

protocol::TryTokenReply Service::Do(const protocol::TryToken &request)
{
    const auto [error, volumeError] = m_tokens.Try(request.generation, request.index, request.pin);
    if (volumeError != Error::None)
        Log(kLogErrors, std::string("Login by token refused: ") + volume::Describe(volumeError));
    else if (error != token::Error::None)
        Log(kLogCalls, std::string("Login by token refused: ") + token::Describe(error));
    else
        Log(kLogCalls, "Login by token: the keyslot is open.");
    return {token_process::ToMessage(error), ToTell(volumeError)};
}

protocol::CheckReplaceableReply Service::Do(const protocol::CheckReplaceable &)
{
    return {ToTell(m_unlockSession.CheckReplaceable())};
}

protocol::ReplacePasswordReply Service::Do(const protocol::ReplacePassword &request)
{
    const Error error = m_gate.Replace(request.password);
    if (error == Error::None)
        Log(kLogCalls, "Password change: the new password counts.");
    else
        Log(kLogErrors, std::string("Password change: ") + volume::Describe(error));
    return {ToTellOfChange(error), m_unlockSession.MayStart()};
}

protocol::RecoveryBeginReply Service::Do(const protocol::RecoveryBegin &)
{
    using protocol::RecoveryOffer;
    switch (m_recovery.Begin()) {
    case RecoverySession::Beginning::Begun:
        return {RecoveryOffer::Ready, kEntropyBytes};
    case RecoverySession::Beginning::CannotSave:
        return {RecoveryOffer::ReadOnly};
    case RecoverySession::Beginning::NoRecovery:
        break;
    }
    return {RecoveryOffer::None};
}

protocol::RecoveryEntropyReply Service::Do(const protocol::RecoveryEntropy &request)
{
    protocol::RecoveryEntropyReply reply;
    if (!m_recovery.IsUnderWay())
        return reply;
    const std::string_view bytes = request.bytes.View();
    for (std::string &line :
         m_recovery.MakeChallenge({reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size()}))
        reply.challenge.push_back({std::move(line)});
    Log(kLogCalls, "Recovery: the challenge is made.");
    return reply;
}

protocol::RecoveryFinishReply Service::Do(const protocol::RecoveryFinish &request)
{
    using protocol::RecoveryResult;
    protocol::RecoveryFinishReply reply;
    if (!m_recovery.IsUnderWay())
        return reply;
    const std::string_view lines[] = {request.lines[0].View(), request.lines[1].View()};
    const RecoverySession::Verdict verdict = m_recovery.Check(lines);
    reply.result = ToTell(verdict.answer);
    reply.error = ToTell(verdict.error);
    if (reply.result == RecoveryResult::Accepted) {
        reply.domain = m_unlockSession.Name().domain;
        reply.user = m_unlockSession.Name().user;
    } else if (reply.result == RecoveryResult::RejectedTooOften) {
        m_recovery.End();
    }
    return reply;
}

protocol::ForgetReply Service::Do(const protocol::Forget &)
{
    Forget();
    return {};
}

protocol::StartReply Service::Do(const protocol::Start &)
{
    using protocol::StartResult;
    const kro::result_t result = m_unlockSession.Start();
    if (kro::Failed(result))
        return {result == kro::kProhibited ? StartResult::Prohibited : StartResult::Failed};
    Log(kLogCalls, m_unlockSession.IsTestBoot() ? "The test boot ends." : "The operating system starts.");
    return {m_unlockSession.IsTestBoot() ? StartResult::TestBootEnded : StartResult::Started};
}

} // namespace host
