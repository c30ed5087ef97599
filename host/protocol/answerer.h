// SPDX-License-Identifier: Apache-2.0
// The side that answers. The other one may be anything that has taken its place.
#pragma once

#include "host/protocol/messages.h"
#include "host/protocol/peer.h"

namespace protocol {

// `Requests` is a variant of all that may be asked.
template <typename Requests>
class Answerer : public Peer
{
public:
    explicit Answerer(std::unique_ptr<Channel> channel)
        : Peer(std::move(channel))
    {
    }

    // A request to be answered by Reply. Nothing when none came within the time, or the connection is closed
    // now: by a request while another one is unanswered, or by what is no request at all. To be called also
    // while a request is being worked on: that is how the end of the other side is noticed.
    std::optional<Requests> Receive(Limit limit = std::chrono::milliseconds(0))
    {
        const std::optional<Kind> kind = Peer::Receive(limit);
        if (!kind)
            return std::nullopt;
        std::optional<Requests> request = DecodeAny<Requests>(Packet());
        Discard();
        if (!request || m_reply) {
            Fail(request ? Fault::OutOfTurn : Fault::BadPacket);
            return std::nullopt;
        }
        m_reply = ReplyTo(*kind);
        return request;
    }
    bool IsAnswering() const { return m_reply.has_value(); }

    // To the request that was received last. False when the connection is closed, which a reply to anything
    // else leads to.
    template <typename Message>
    bool Reply(const Message &message)
    {
        if (m_reply != Message::kKind)
            Fail(Fault::OutOfTurn);
        m_reply.reset();
        return SendOrFail(Encode(message));
    }

protected:
    // A side that waits for a reply that cannot be sent would wait for ever.
    bool SendOrFail(const std::optional<Secret> &packet)
    {
        if (!packet)
            Fail(Fault::BadPacket);
        return packet && Send(*packet);
    }

private:
    std::optional<Kind> m_reply; // while one is expected
};

} // namespace protocol
