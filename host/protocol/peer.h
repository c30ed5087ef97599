// SPDX-License-Identifier: Apache-2.0
// What both sides of the protocol have in common: the channel, and the end of it. A side that finds anything
// wrong closes the connection and remembers why; from then on nothing is sent or received. One thread uses
// it.
#pragma once

#include <memory>

#include "host/protocol/channel.h"

namespace protocol {

enum class Fault {
    None,
    Gone,   // the other side has ended
    Unread, // the other side takes nothing any more
    BadPacket,
    OtherVersion,
    OutOfTurn,
    TimedOut,
    Closed, // by this side, for no fault
};

// What has happened, in one line without a full stop.
const char *Describe(Fault fault);

class Peer
{
public:
    Peer(const Peer &) = delete;
    Peer &operator=(const Peer &) = delete;

    bool IsOpen() const { return m_fault == Fault::None; }
    Fault WhyClosed() const { return m_fault; }
    // To be polled; -1 when closed.
    int Descriptor() const { return IsOpen() ? m_channel->Descriptor() : -1; }
    void Close() { Fail(Fault::Closed); }

protected:
    explicit Peer(std::unique_ptr<Channel> channel);
    ~Peer() = default;

    bool Send(const Secret &packet);
    // The kind of what has come, until Discard; nothing when nothing came or the connection is closed.
    std::optional<Kind> Receive(Limit limit);
    std::string_view Packet() const { return m_packet.View(); }
    void Discard();
    // The first fault counts.
    void Fail(Fault fault);

private:
    std::unique_ptr<Channel> m_channel;
    Secret m_packet;
    Fault m_fault = Fault::None;
};

} // namespace protocol
