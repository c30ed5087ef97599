// SPDX-License-Identifier: Apache-2.0
#include "host/protocol/asker.h"

#include "base/flag_scope.h"

namespace protocol {

Asker::Asker(std::unique_ptr<Channel> channel, Wait wait)
    : Peer(std::move(channel))
    , m_wait(std::move(wait))
{
}

// Whatever is there before the question is no answer to it.
bool Asker::Exchange(const Secret &packet, Kind reply, Limit limit)
{
    if (m_asking || !TakeEvents() || !Send(packet))
        return false;
    const base::FlagScope asking(m_asking);
    return AwaitReply(reply, Deadline(limit));
}

bool Asker::AwaitReply(Kind reply, const Deadline &deadline)
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

std::optional<Kind> Asker::ReceiveWithin(const Deadline &deadline)
{
    if (!m_wait)
        return Receive(deadline.Left());
    if (!m_wait(Descriptor()))
        Fail(Fault::TimedOut);
    return Receive(std::chrono::milliseconds(0));
}

bool Asker::TakeEvents()
{
    while (const std::optional<Kind> kind = m_asking ? std::nullopt : Receive(std::chrono::milliseconds(0)))
        TakeEvent(*kind);
    return IsOpen();
}

} // namespace protocol
