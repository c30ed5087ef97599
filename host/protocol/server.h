// SPDX-License-Identifier: Apache-2.0
// The service's side. The other one may be anything that has taken a screen's place.
#pragma once

#include "host/protocol/messages.h"
#include "host/protocol/peer.h"

namespace protocol {

class Server final : public Peer
{
public:
    explicit Server(std::unique_ptr<Channel> channel);

    // A request to be answered by Reply. Nothing when none came within the time, or the connection is closed
    // now: by a request while another one is unanswered, by anything else than Hello at first, or by what is
    // no request at all. To be called also while a request is being worked on: that is how the end of the
    // other side is noticed.
    std::optional<Request> Receive(Limit limit = std::chrono::milliseconds(0));
    bool IsAnswering() const { return m_reply.has_value(); }

    // To the request that was received last. False when the connection is closed, which a reply to anything
    // else leads to.
    template <typename Message>
    bool Reply(const Message &message)
    {
        return SendReply(Message::kKind, Encode(message));
    }
    // At any time.
    bool Tell(const Tokens &tokens) { return SendOrFail(Encode(tokens)); }
    bool Tell(const Stop &stop) { return SendOrFail(Encode(stop)); }

private:
    bool SendReply(Kind kind, const std::optional<Secret> &packet);
    bool SendOrFail(const std::optional<Secret> &packet);

    std::optional<Kind> m_reply; // while one is expected
    bool m_greeted = false;
};

} // namespace protocol
