// SPDX-License-Identifier: Apache-2.0
#include "host/token_process/wire.h"

#include <algorithm>
#include <iterator>

namespace token_process {
namespace {

template <std::size_t Size>
void Copy(const unsigned char (&from)[Size], unsigned char (&to)[Size])
{
    std::copy(std::begin(from), std::end(from), std::begin(to));
}

protocol::ListedToken Listed(const token::Token &token)
{
    protocol::ListedToken listed;
    listed.identity = ToMessage(token);
    listed.flags = static_cast<std::uint32_t>(token.Info().flags);
    Copy(token.Reader().slotDescription, listed.reader);
    Copy(token.Reader().manufacturerID, listed.readerManufacturer);
    return listed;
}

token::Description Described(const protocol::ListedToken &listed, const CK_INFO &maker)
{
    CK_TOKEN_INFO info{};
    Copy(listed.identity.label, info.label);
    Copy(listed.identity.manufacturer, info.manufacturerID);
    Copy(listed.identity.model, info.model);
    Copy(listed.identity.serial, info.serialNumber);
    info.flags = listed.flags;
    CK_SLOT_INFO reader{};
    Copy(listed.reader, reader.slotDescription);
    Copy(listed.readerManufacturer, reader.manufacturerID);
    return {listed.identity.slot, info, reader, maker};
}

} // namespace

protocol::TokenIdentity ToMessage(const token::Description &token)
{
    protocol::TokenIdentity identity;
    Copy(token.Info().label, identity.label);
    Copy(token.Info().manufacturerID, identity.manufacturer);
    Copy(token.Info().model, identity.model);
    Copy(token.Info().serialNumber, identity.serial);
    identity.slot = token.Slot();
    return identity;
}

protocol::ListTokensReply ToMessage(const std::vector<token::Token> &tokens, bool loaded)
{
    protocol::ListTokensReply reply;
    reply.loaded = loaded;
    if (tokens.empty())
        return reply;
    const CK_INFO &maker = tokens.front().Maker();
    Copy(maker.manufacturerID, reply.manufacturer);
    Copy(maker.libraryDescription, reply.library);
    reply.majorVersion = maker.libraryVersion.major;
    reply.minorVersion = maker.libraryVersion.minor;
    const std::size_t count = std::min(tokens.size(), protocol::kMaxTokens);
    std::transform(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(count),
                   std::back_inserter(reply.tokens), Listed);
    return reply;
}

std::vector<token::Description> FromMessage(const protocol::ListTokensReply &reply)
{
    CK_INFO maker{};
    Copy(reply.manufacturer, maker.manufacturerID);
    Copy(reply.library, maker.libraryDescription);
    maker.libraryVersion = {reply.majorVersion, reply.minorVersion};
    std::vector<token::Description> tokens;
    for (const protocol::ListedToken &listed : reply.tokens)
        tokens.push_back(Described(listed, maker));
    return tokens;
}

namespace {

constexpr std::pair<token::Error, protocol::TokenError> kErrors[] = {
    {token::Error::None, protocol::TokenError::None},
    {token::Error::PinMissing, protocol::TokenError::PinMissing},
    {token::Error::WrongPin, protocol::TokenError::WrongPin},
    {token::Error::FewTriesLeft, protocol::TokenError::FewTriesLeft},
    {token::Error::LastTry, protocol::TokenError::LastTry},
    {token::Error::PinLocked, protocol::TokenError::PinLocked},
    {token::Error::PinExpired, protocol::TokenError::PinExpired},
    {token::Error::Removed, protocol::TokenError::Removed},
    {token::Error::NotEnrolled, protocol::TokenError::NotEnrolled},
    {token::Error::NoKey, protocol::TokenError::NoKey},
    {token::Error::Cancelled, protocol::TokenError::Cancelled},
};

} // namespace

protocol::TokenError ToMessage(token::Error error)
{
    const auto *found = std::find_if(std::begin(kErrors), std::end(kErrors),
                                     [&](const auto &pair) { return pair.first == error; });
    return found == std::end(kErrors) ? protocol::TokenError::Failed : found->second;
}

token::Error FromMessage(protocol::TokenError error)
{
    const auto *found = std::find_if(std::begin(kErrors), std::end(kErrors),
                                     [&](const auto &pair) { return pair.second == error; });
    return found == std::end(kErrors) ? token::Error::Failed : found->first;
}

} // namespace token_process
