// SPDX-License-Identifier: Apache-2.0
#include "host/protocol/server.h"

namespace protocol {

std::optional<Request> Server::Receive(Limit limit)
{
    std::optional<Request> request = Answerer::Receive(limit);
    m_greeted |= request && std::holds_alternative<Hello>(*request);
    if (!m_greeted && request) {
        Fail(Fault::OutOfTurn);
        request.reset();
    }
    return request;
}

} // namespace protocol
