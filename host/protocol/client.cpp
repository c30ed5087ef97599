// SPDX-License-Identifier: Apache-2.0
#include "host/protocol/client.h"

#include "base/flag_scope.h"

namespace protocol {

Client::Client(std::unique_ptr<Channel> channel, Wait wait)
    : Peer(std::move(channel))
    , m_wait(std::move(wait))
{
}

// Whatever is there before the question is no answer to it.
bool Client::Exchange(const Secret &packet, Kind reply, Limit limit)
{
    if (m_asking || !TakeEvents() || !Send(packet))
        return false;
    const base::FlagScope asking(m_asking);
    return AwaitReply(reply, Deadline(limit));
}

bool Client::AwaitReply(Kind reply, const Deadline &deadline)
{
    while (IsOpen()) {
        const std::optional<Kind> kind = ReceiveWithin(deadline);
        if (kind == reply)
            return true;
        if (kind)
            TakeEvent(*kind);
        else if (deadline.Left() == std::chrono::milliseconds(0))
            Fail(Fault::TimedOut);
    }
    return false;
}

std::optional<Kind> Client::ReceiveWithin(const Deadline &deadline)
{
    if (!m_wait)
        return Receive(deadline.Left());
    if (!m_wait(Descriptor()))
        Fail(Fault::TimedOut);
    return Receive(std::chrono::milliseconds(0));
}

bool Client::TakeEvents()
{
    while (const std::optional<Kind> kind = m_asking ? std::nullopt : Receive(std::chrono::milliseconds(0)))
        TakeEvent(*kind);
    return IsOpen();
}

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
