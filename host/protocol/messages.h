// SPDX-License-Identifier: Apache-2.0
// What the screen asks of the service, what the service answers, and what it tells without being asked. The
// service trusts nothing that a screen says: each request may come at any time and in any order, and is
// answered by what the service itself knows.
//
// Every message lists its fields once, in Visit, for the writer and for the reader.
#pragma once

#include <variant>

#include "host/protocol/packet.h"

namespace protocol {

inline constexpr std::size_t kMaxName = 256;   // of a user or a domain, in bytes
inline constexpr std::size_t kMaxTyped = 3072; // a password or a PIN
inline constexpr std::size_t kMaxEntropy = 64;
inline constexpr std::size_t kMaxCodeLine = 64; // of a challenge or a response
inline constexpr std::size_t kMaxChallengeLines = 8;
inline constexpr std::size_t kResponseLines = 2;
inline constexpr std::size_t kMaxTokens = 16;
inline constexpr std::size_t kMaxTokenName = 128;
inline constexpr std::size_t kMaxTokenSerial = 64;

// Why the volume did not do what was asked of it, as far as a person is told; the log tells more.
enum class VolumeError : std::uint8_t {
    None,
    WrongPassword,
    OutOfMemory,
    Vanished,
    PasswordTooShort,
    PasswordUnchanged,
    NotReplaceable, // the header is full or read-only, or this is nobody's password
    Busy,           // another program is changing the header
    DiskFault,
    Failed,
    Last = Failed
};

enum class TokenError : std::uint8_t {
    None,
    PinMissing,
    WrongPin,
    FewTriesLeft,
    LastTry,
    PinLocked,
    PinExpired,
    Removed, // also one that is no longer what the list had at this place
    NotEnrolled,
    NoKey,
    Cancelled,
    Failed,
    Last = Failed
};

enum class LoginResult : std::uint8_t { Opened, Wrong, Wait, Failed, Last = Failed };
enum class RecoveryOffer : std::uint8_t { None, ReadOnly, Ready, Last = Ready };
enum class RecoveryResult : std::uint8_t {
    Accepted,
    Rejected,
    RejectedTooOften, // the challenge is void; only a new RecoveryBegin leads on
    UnknownUser,
    Failed,
    Last = Failed
};
enum class StartResult : std::uint8_t {
    Started,
    TestBootEnded,
    Prohibited,
    Cancelled,
    Failed,
    Last = Failed
};

// For messages whose kind says all.
template <Kind TheKind>
struct EmptyMessage
{
    static constexpr Kind kKind = TheKind;
    static void Visit(auto &, auto &) {}
};

struct HelloReply
{
    static constexpr Kind kKind = ReplyTo(Kind::Hello);
    bool passwordsOffered = false;
    bool tokensOffered = false;
    bool testBoot = false;
    bool autologonAllowed = false; // in this service's life there is one
    std::uint16_t leastPasswordLength = 0;

    static void Visit(auto &message, auto &fields)
    {
        fields.Flag(message.passwordsOffered);
        fields.Flag(message.tokensOffered);
        fields.Flag(message.testBoot);
        fields.Flag(message.autologonAllowed);
        fields.Number(message.leastPasswordLength);
    }
};

// The first request of a screen. What an earlier one had opened is forgotten. The version stands in every
// packet.
struct Hello : EmptyMessage<Kind::Hello>
{
    using Reply = HelloReply;
};

struct TryPasswordReply
{
    static constexpr Kind kKind = ReplyTo(Kind::TryPassword);
    LoginResult result = LoginResult::Failed;
    std::uint32_t secondsToWait = 0;       // with Wait
    VolumeError error = VolumeError::None; // with Failed
    bool mustReplace = false;              // with Opened: nothing starts before
    bool hasExpired = false;               // with Opened, whether or not it can be replaced

    static void Visit(auto &message, auto &fields)
    {
        fields.Choice(message.result);
        fields.Number(message.secondsToWait);
        fields.Choice(message.error);
        fields.Flag(message.mustReplace);
        fields.Flag(message.hasExpired);
    }
};

struct TryPassword
{
    static constexpr Kind kKind = Kind::TryPassword;
    using Reply = TryPasswordReply;
    std::string domain; // may be empty
    std::string user;
    Secret password;

    static void Visit(auto &message, auto &fields)
    {
        fields.Name(message.domain, kMaxName);
        fields.Name(message.user, kMaxName);
        fields.Typed(message.password, kMaxTyped);
    }
};

// Opened when both are None; the volume's error goes before the token's.
struct TryTokenReply
{
    static constexpr Kind kKind = ReplyTo(Kind::TryToken);
    TokenError tokenError = TokenError::Failed;
    VolumeError volumeError = VolumeError::None;

    static void Visit(auto &message, auto &fields)
    {
        fields.Choice(message.tokenError);
        fields.Choice(message.volumeError);
    }
};

// The PIN goes to the token that stood at this place of this list, or to none.
struct TryToken
{
    static constexpr Kind kKind = Kind::TryToken;
    using Reply = TryTokenReply;
    std::uint32_t generation = 0;
    std::uint8_t index = 0;
    Secret pin; // may be empty

    static void Visit(auto &message, auto &fields)
    {
        fields.Number(message.generation);
        fields.Number(message.index);
        fields.Typed(message.pin, kMaxTyped);
    }
};

struct CheckReplaceableReply
{
    static constexpr Kind kKind = ReplyTo(Kind::CheckReplaceable);
    VolumeError error = VolumeError::Failed;

    static void Visit(auto &message, auto &fields) { fields.Choice(message.error); }
};

// Whether the password of whoever was let in can be replaced, as far as can be told without trying.
struct CheckReplaceable : EmptyMessage<Kind::CheckReplaceable>
{
    using Reply = CheckReplaceableReply;
};

struct ReplacePasswordReply
{
    static constexpr Kind kKind = ReplyTo(Kind::ReplacePassword);
    VolumeError error = VolumeError::Failed; // None as soon as the new password counts
    bool letIn = false;                      // whether the volume is open to this person now

    static void Visit(auto &message, auto &fields)
    {
        fields.Choice(message.error);
        fields.Flag(message.letIn);
    }
};

struct ReplacePassword
{
    static constexpr Kind kKind = Kind::ReplacePassword;
    using Reply = ReplacePasswordReply;
    Secret password;

    static void Visit(auto &message, auto &fields) { fields.Typed(message.password, kMaxTyped); }
};

struct RecoveryBeginReply
{
    static constexpr Kind kKind = ReplyTo(Kind::RecoveryBegin);
    RecoveryOffer offer = RecoveryOffer::None;
    std::uint8_t entropyBytes = 0; // wanted, with Ready; at most kMaxEntropy

    static void Visit(auto &message, auto &fields)
    {
        fields.Choice(message.offer);
        fields.Number(message.entropyBytes);
    }
};

// Also begins anew; what was opened is forgotten.
struct RecoveryBegin : EmptyMessage<Kind::RecoveryBegin>
{
    using Reply = RecoveryBeginReply;
};

struct CodeLine
{
    std::string text;

    static void Visit(auto &message, auto &fields) { fields.Name(message.text, kMaxCodeLine); }
};

struct RecoveryEntropyReply
{
    static constexpr Kind kKind = ReplyTo(Kind::RecoveryEntropy);
    std::vector<CodeLine> challenge; // empty when no recovery has begun

    static void Visit(auto &message, auto &fields) { fields.List(message.challenge, kMaxChallengeLines); }
};

struct RecoveryEntropy
{
    static constexpr Kind kKind = Kind::RecoveryEntropy;
    using Reply = RecoveryEntropyReply;
    Secret bytes;

    static void Visit(auto &message, auto &fields) { fields.Bytes(message.bytes, kMaxEntropy); }
};

struct RecoveryFinishReply
{
    static constexpr Kind kKind = ReplyTo(Kind::RecoveryFinish);
    RecoveryResult result = RecoveryResult::Failed;
    VolumeError error = VolumeError::None; // with Failed
    std::string domain;                    // with Accepted: whose password is to be set
    std::string user;

    static void Visit(auto &message, auto &fields)
    {
        fields.Choice(message.result);
        fields.Choice(message.error);
        fields.Name(message.domain, kMaxName);
        fields.Name(message.user, kMaxName);
    }
};

struct RecoveryFinish
{
    static constexpr Kind kKind = Kind::RecoveryFinish;
    using Reply = RecoveryFinishReply;
    Secret lines[kResponseLines]; // each with its check digit right

    static void Visit(auto &message, auto &fields)
    {
        for (auto &line : message.lines)
            fields.Typed(line, kMaxCodeLine);
    }
};

struct ForgetReply : EmptyMessage<ReplyTo(Kind::Forget)>
{
};

struct Forget : EmptyMessage<Kind::Forget>
{
    using Reply = ForgetReply;
};

struct StartReply
{
    static constexpr Kind kKind = ReplyTo(Kind::Start);
    StartResult result = StartResult::Failed;

    static void Visit(auto &message, auto &fields) { fields.Choice(message.result); }
};

// Being asked proves nothing; an opened keyslot in the service's hands does.
struct Start : EmptyMessage<Kind::Start>
{
    using Reply = StartReply;
};

struct TokenInfo
{
    std::string name; // as it is shown, without a remark about the reader
    std::string serial;
    bool usable = false; // the volume knows it, and its PIN is not locked
    bool pinPad = false;

    static void Visit(auto &message, auto &fields)
    {
        fields.Name(message.name, kMaxTokenName);
        fields.Name(message.serial, kMaxTokenSerial);
        fields.Flag(message.usable);
        fields.Flag(message.pinPad);
    }
};

// All that are connected, in the order in which they are shown; replaces what was told before.
struct Tokens
{
    static constexpr Kind kKind = Kind::Tokens;
    std::uint32_t generation = 0;
    std::vector<TokenInfo> tokens;

    static void Visit(auto &message, auto &fields)
    {
        fields.Number(message.generation);
        fields.List(message.tokens, kMaxTokens);
    }
};
static_assert(kMaxTokens * (kMaxTokenName + kMaxTokenSerial + 6) + 16 <= kMaxPacket);
static_assert(2 * kMaxName + kMaxTyped + 16 <= kMaxPacket);

// The program is to end. Told before the reply to whatever is under way.
struct Stop : EmptyMessage<Kind::Stop>
{
};

using Request = std::variant<Hello, TryPassword, TryToken, CheckReplaceable, ReplacePassword, RecoveryBegin,
                             RecoveryEntropy, RecoveryFinish, Forget, Start>;
using Event = std::variant<Tokens, Stop>;
using AnyReply =
    std::variant<HelloReply, TryPasswordReply, TryTokenReply, CheckReplaceableReply, ReplacePasswordReply,
                 RecoveryBeginReply, RecoveryEntropyReply, RecoveryFinishReply, ForgetReply, StartReply>;

template <typename Variant>
struct VariantDecoder;

template <typename... Messages>
struct VariantDecoder<std::variant<Messages...>>
{
    using Variant = std::variant<Messages...>;

    static std::optional<Variant> Decode(std::string_view packet)
    {
        std::optional<Variant> found;
        const std::optional<Kind> kind = KindOf(packet);
        static_cast<void>(((kind == Messages::kKind && Take<Messages>(packet, &found)) || ...));
        return found;
    }

private:
    template <typename Message>
    static bool Take(std::string_view packet, std::optional<Variant> *found)
    {
        if (auto message = protocol::Decode<Message>(packet))
            found->emplace(std::move(*message));
        return true;
    }
};

// Of any bytes: nothing unless they are one whole message of these.
template <typename Variant>
std::optional<Variant> DecodeAny(std::string_view packet)
{
    return VariantDecoder<Variant>::Decode(packet);
}

} // namespace protocol
