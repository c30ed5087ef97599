// SPDX-License-Identifier: Apache-2.0
// The screen's side: it asks, one question at a time, and takes what the service tells in between.
#pragma once

#include <functional>

#include "host/protocol/messages.h"
#include "host/protocol/peer.h"

namespace protocol {

class Client final : public Peer
{
public:
    // Called instead of waiting for the descriptor; returns when it is readable or has been closed by the
    // other side. False gives up, and closes the connection. It must not ask anything.
    using Wait = std::function<bool(int descriptor)>;

    explicit Client(std::unique_ptr<Channel> channel, Wait wait = {});

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
    // The newest list, if one has come since the last call.
    std::optional<Tokens> TakeTokens();
    // From the first Stop on.
    bool StopRequested() const { return m_stop; }

private:
    bool Exchange(const Secret &packet, Kind reply, Limit limit);
    bool AwaitReply(Kind reply, const Deadline &deadline);
    std::optional<Kind> ReceiveWithin(const Deadline &deadline);
    void TakeEvent(Kind kind);

    Wait m_wait;
    std::optional<Tokens> m_tokens;
    bool m_stop = false;
    bool m_asking = false;
};

} // namespace protocol
