// SPDX-License-Identifier: Apache-2.0
// What the service asks of the process in which a PKCS#11 module runs, one question at a time. Neither side
// believes the other: the process may be anything that a module has made of it.
#pragma once

#include "host/protocol/messages.h"

namespace protocol {

inline constexpr std::size_t kMaxTokenUri = 2048;
inline constexpr std::size_t kMaxWrappedKey = 1024; // of RSA with 8,192 bits
// The base-64 text of what is no longer than that.
inline constexpr std::size_t kMaxCandidate = (kMaxWrappedKey + 2) / 3 * 4;

// As PKCS#11 has them: filled up with blanks, and any bytes may stand there.
struct TokenIdentity
{
    unsigned char label[32]{};
    unsigned char manufacturer[32]{};
    unsigned char model[16]{};
    unsigned char serial[16]{};
    std::uint64_t slot = 0;

    static void Visit(auto &message, auto &fields)
    {
        fields.Field(message.label);
        fields.Field(message.manufacturer);
        fields.Field(message.model);
        fields.Field(message.serial);
        fields.Number(message.slot);
    }
};

struct ListedToken
{
    TokenIdentity identity;
    std::uint32_t flags = 0; // the token's
    unsigned char reader[64]{};
    unsigned char readerManufacturer[32]{};

    static void Visit(auto &message, auto &fields)
    {
        TokenIdentity::Visit(message.identity, fields);
        fields.Number(message.flags);
        fields.Field(message.reader);
        fields.Field(message.readerManufacturer);
    }
};

struct ListTokensReply
{
    static constexpr Kind kKind = ReplyTo(Kind::ListTokens);
    bool loaded = false; // the module
    unsigned char manufacturer[32]{};
    unsigned char library[32]{};
    std::uint8_t majorVersion = 0;
    std::uint8_t minorVersion = 0;
    std::vector<ListedToken> tokens; // those with a PIN

    static void Visit(auto &message, auto &fields)
    {
        fields.Flag(message.loaded);
        fields.Field(message.manufacturer);
        fields.Field(message.library);
        fields.Number(message.majorVersion);
        fields.Number(message.minorVersion);
        fields.List(message.tokens, kMaxTokens);
    }
};
static_assert(kMaxTokens * (96 + 8 + 4 + 96) + 80 <= kMaxPacket);

struct ListTokens : EmptyMessage<Kind::ListTokens>
{
    using Reply = ListTokensReply;
};

struct LogInReply
{
    static constexpr Kind kKind = ReplyTo(Kind::LogIn);
    TokenError error = TokenError::Failed;

    static void Visit(auto &message, auto &fields) { fields.Choice(message.error); }
};

// To a token of the last list. Removed when the slot holds another one by now.
struct LogIn
{
    static constexpr Kind kKind = Kind::LogIn;
    using Reply = LogInReply;
    TokenIdentity token;
    Secret pin; // may be empty

    static void Visit(auto &message, auto &fields)
    {
        TokenIdentity::Visit(message.token, fields);
        fields.Typed(message.pin, kMaxTyped);
    }
};

template <Kind TheKind>
struct CandidateReply
{
    static constexpr Kind kKind = TheKind;
    TokenError error = TokenError::Failed;
    Secret passphrase; // with None

    static void Visit(auto &message, auto &fields)
    {
        fields.Choice(message.error);
        fields.Bytes(message.passphrase, kMaxCandidate);
    }
};

// What the likeliest key makes of an enrolment. The keys that are not the right one need not fail.
struct Unwrap
{
    static constexpr Kind kKind = Kind::Unwrap;
    using Reply = CandidateReply<ReplyTo(kKind)>;
    std::string uri;
    Secret key; // encrypted, or a point

    static void Visit(auto &message, auto &fields)
    {
        fields.Name(message.uri, kMaxTokenUri);
        fields.Bytes(message.key, kMaxWrappedKey);
    }
};

// What the next key makes of the same. NoKey when there is no other.
struct UnwrapByNextKey : EmptyMessage<Kind::UnwrapByNextKey>
{
    using Reply = CandidateReply<ReplyTo(Kind::UnwrapByNextKey)>;
};

struct LogOutReply : EmptyMessage<ReplyTo(Kind::LogOut)>
{
};

// Also when nobody has logged in.
struct LogOut : EmptyMessage<Kind::LogOut>
{
    using Reply = LogOutReply;
};

using TokenRequest = std::variant<ListTokens, LogIn, Unwrap, UnwrapByNextKey, LogOut>;

} // namespace protocol
