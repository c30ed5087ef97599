// SPDX-License-Identifier: Apache-2.0
// The screen's side: it asks, one question at a time, and takes what the service tells in between.
#pragma once

#include "host/protocol/asker.h"
#include "host/protocol/messages.h"

namespace protocol {

class Client final : public Asker
{
public:
    using Asker::Asker;

    // The newest list, if one has come since the last call.
    std::optional<Tokens> TakeTokens();
    // From the first Stop on.
    bool StopRequested() const { return m_stop; }

private:
    void TakeEvent(Kind kind) override;

    std::optional<Tokens> m_tokens;
    bool m_stop = false;
};

} // namespace protocol
