// SPDX-License-Identifier: Apache-2.0
#include "host/protocol/peer.h"

#include <cstring>

namespace protocol {

const char *Describe(Fault fault)
{
    switch (fault) {
    case Fault::None:
        return "the connection is open";
    case Fault::Gone:
        return "the other side has ended";
    case Fault::Unread:
        return "the other side takes no packets any more";
    case Fault::BadPacket:
        return "the other side has sent a packet that means nothing";
    case Fault::OtherVersion:
        return "the other side is of another version; install both from the same package";
    case Fault::OutOfTurn:
        return "the other side has spoken out of turn";
    case Fault::TimedOut:
        return "the other side does not answer";
    case Fault::Closed:
        break;
    }
    return "the connection is closed";
}

Peer::Peer(std::unique_ptr<Channel> channel)
    : m_channel(std::move(channel))
    , m_packet(kMaxPacket)
{
}

bool Peer::Send(const Secret &packet)
{
    if (IsOpen() && !m_channel->Send(packet.View()))
        Fail(Fault::Unread);
    return IsOpen();
}

std::optional<Kind> Peer::Receive(Limit limit)
{
    Discard();
    const Received received = IsOpen() ? m_channel->Receive(&m_packet, limit) : Received::Nothing;
    if (received == Received::Gone)
        Fail(Fault::Gone);
    if (received == Received::Bad)
        Fail(Fault::BadPacket);
    if (received != Received::Packet)
        return std::nullopt;
    const std::optional<Kind> kind = KindOf(m_packet.View());
    if (!kind)
        Fail(IsOfThisVersion(m_packet.View()) ? Fault::BadPacket : Fault::OtherVersion);
    return kind;
}

void Peer::Discard()
{
    explicit_bzero(m_packet.Buffer(), m_packet.Capacity());
    m_packet.SetSize(0);
}

void Peer::Fail(Fault fault)
{
    Discard();
    if (!IsOpen())
        return;
    m_fault = fault;
    m_channel->Close();
}

} // namespace protocol
