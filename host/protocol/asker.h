// SPDX-License-Identifier: Apache-2.0
// The side that asks, one question at a time.
#pragma once

#include <functional>

#include "host/protocol/packet.h"
#include "host/protocol/peer.h"

namespace protocol {

class Asker : public Peer
{
public:
    // Called instead of waiting for the descriptor; returns when it is readable or has been closed by the
    // other side. False gives up, and closes the connection. It must not ask anything.
    using Wait = std::function<bool(int descriptor)>;

    explicit Asker(std::unique_ptr<Channel> channel, Wait wait = {});
    virtual ~Asker() = default;

    // Nothing when the question cannot be sent, because a field is too long or no text: then the connection
    // stays open, and nobody has been asked. Nothing as well when there is no answer within `limit`, or the
    // connection has ended otherwise. `limit` is for those who have no Wait of their own.
    template <typename Request>
    std::optional<typename Request::Reply> Ask(const Request &request, Limit limit = {})
    {
        const std::optional<Secret> packet = Encode(request);
        if (!packet || !Exchange(*packet, Request::Reply::kKind, limit))
            return std::nullopt;
        auto reply = Decode<typename Request::Reply>(Packet());
        Discard();
        if (!reply)
            Fail(Fault::BadPacket);
        return reply;
    }

    // Takes the events that have come, without waiting; for when the descriptor is readable while nothing is
    // being asked. False when the connection is closed.
    bool TakeEvents();

protected:
    // Of what comes without having been asked for; until Discard it is the packet. Out of turn, as long as
    // nobody knows better.
    virtual void TakeEvent(Kind) { Fail(Fault::OutOfTurn); }

private:
    bool Exchange(const Secret &packet, Kind reply, Limit limit);
    bool AwaitReply(Kind reply, const Deadline &deadline);
    std::optional<Kind> ReceiveWithin(const Deadline &deadline);

    Wait m_wait;
    bool m_asking = false;
};

} // namespace protocol
