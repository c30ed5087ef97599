// SPDX-License-Identifier: Apache-2.0
// A channel without the kernel, to another side in the same process. Instead of waiting, Receive lets the
// other side act.
#pragma once

#include <deque>
#include <functional>

#include "host/protocol/channel.h"

class MemoryChannel final : public protocol::Channel
{
public:
    using Queue = std::deque<std::string>;

    // What the other side does when this one would wait.
    std::function<void()> others = [] {};
    int descriptor = -1;

    static std::pair<std::unique_ptr<MemoryChannel>, std::unique_ptr<MemoryChannel>> MakePair()
    {
        const auto queues = std::make_shared<Queues>();
        return {std::unique_ptr<MemoryChannel>(new MemoryChannel(queues, queues->first, queues->second)),
                std::unique_ptr<MemoryChannel>(new MemoryChannel(queues, queues->second, queues->first))};
    }

    bool Send(std::string_view packet) override
    {
        if (m_queues->open)
            m_out.emplace_back(packet);
        return m_queues->open;
    }
    protocol::Received Receive(protocol::Secret *packet, protocol::Limit limit) override
    {
        if (m_in.empty() && limit != std::chrono::milliseconds(0))
            others();
        if (m_in.empty())
            return m_queues->open ? protocol::Received::Nothing : protocol::Received::Gone;
        packet->SetSize(m_in.front().copy(packet->Buffer(), packet->Capacity()));
        const bool whole = packet->Size() == m_in.front().size();
        m_in.pop_front();
        return whole ? protocol::Received::Packet : protocol::Received::Bad;
    }
    int Descriptor() const override { return descriptor; }
    void Close() override { m_queues->open = false; }

private:
    struct Queues
    {
        Queue first;
        Queue second;
        bool open = true;
    };

    MemoryChannel(std::shared_ptr<Queues> queues, Queue &in, Queue &out)
        : m_queues(std::move(queues))
        , m_in(in)
        , m_out(out)
    {
    }

    const std::shared_ptr<Queues> m_queues;
    Queue &m_in;
    Queue &m_out;
};
