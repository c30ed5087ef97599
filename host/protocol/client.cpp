// SPDX-License-Identifier: Apache-2.0
#include "host/protocol/client.h"

namespace protocol {

void Client::TakeEvent(Kind kind)
{
    if (!IsEvent(kind))
        return Fail(Fault::OutOfTurn);
    std::optional<Event> event = DecodeAny<Event>(Packet());
    Discard();
    if (!event)
        Fail(Fault::BadPacket);
    else if (auto *tokens = std::get_if<Tokens>(&*event))
        m_tokens = std::move(*tokens);
    else
        m_stop = true;
}

std::optional<Tokens> Client::TakeTokens()
{
    return std::exchange(m_tokens, std::nullopt);
}

} // namespace protocol
