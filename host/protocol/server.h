// SPDX-License-Identifier: Apache-2.0
// The service's side.
#pragma once

#include "host/protocol/answerer.h"

namespace protocol {

class Server final : public Answerer<Request>
{
public:
    using Answerer::Answerer;

    // Anything else than Hello at first closes the connection, too.
    std::optional<Request> Receive(Limit limit = std::chrono::milliseconds(0));
    // At any time.
    bool Tell(const Tokens &tokens) { return SendOrFail(Encode(tokens)); }
    bool Tell(const Stop &stop) { return SendOrFail(Encode(stop)); }

private:
    bool m_greeted = false;
};

} // namespace protocol
