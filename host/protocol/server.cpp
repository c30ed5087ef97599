// SPDX-License-Identifier: Apache-2.0
#include "host/protocol/server.h"

namespace protocol {

Server::Server(std::unique_ptr<Channel> channel)
    : Peer(std::move(channel))
{
}

std::optional<Request> Server::Receive(Limit limit)
{
    const std::optional<Kind> kind = Peer::Receive(limit);
    if (!kind)
        return std::nullopt;
    std::optional<Request> request = DecodeAny<Request>(Packet());
    Discard();
    if (!request) {
        Fail(Fault::BadPacket);
    } else if (m_reply || (!m_greeted && kind != Kind::Hello)) {
        Fail(Fault::OutOfTurn);
        request.reset();
    } else {
        m_greeted = true;
        m_reply = ReplyTo(*kind);
    }
    return request;
}

bool Server::SendReply(Kind kind, const std::optional<Secret> &packet)
{
    if (m_reply != kind)
        Fail(Fault::OutOfTurn);
    m_reply.reset();
    return SendOrFail(packet);
}

// A side that waits for a reply that cannot be sent would wait for ever.
bool Server::SendOrFail(const std::optional<Secret> &packet)
{
    if (!packet)
        Fail(Fault::BadPacket);
    return packet && Send(*packet);
}

} // namespace protocol
