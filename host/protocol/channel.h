// SPDX-License-Identifier: Apache-2.0
// A way for packets between two sides, in order and each as a whole. One thread uses it.
#pragma once

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "host/protocol/packet.h"

namespace protocol {

using Limit = std::optional<std::chrono::milliseconds>; // nothing: for ever

// The moment at which a limit that begins now is over.
class Deadline
{
public:
    using Clock = std::chrono::steady_clock;

    explicit Deadline(Limit limit)
        : m_limited(limit.has_value())
        , m_end(Clock::now() + limit.value_or(std::chrono::milliseconds(0)))
    {
    }
    Limit Left() const
    {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_end - Clock::now());
        return m_limited ? Limit(std::max(left, std::chrono::milliseconds(0))) : std::nullopt;
    }

private:
    bool m_limited;
    Clock::time_point m_end;
};

enum class Received {
    Packet,
    Nothing, // within the time
    Gone,    // the other side has closed its end
    Bad,     // longer than a packet may be, or with descriptors
};

class Channel
{
public:
    virtual ~Channel() = default;

    // Never waits: false when the other side is gone, or reads nothing any more.
    [[nodiscard]] virtual bool Send(std::string_view packet) = 0;
    // `packet` has room for kMaxPacket bytes and is overwritten.
    [[nodiscard]] virtual Received Receive(Secret *packet, Limit limit) = 0;
    // Readable when Receive would not wait; -1 where there is nothing to wait for.
    virtual int Descriptor() const = 0;
    // The other side finds this end gone. May be repeated.
    virtual void Close() = 0;
};

using ChannelPair = std::pair<std::unique_ptr<Channel>, std::unique_ptr<Channel>>;

} // namespace protocol
