// SPDX-License-Identifier: Apache-2.0
// What the service reads from whatever has taken a screen's place. A packet that is accepted is the only way
// to write its message.
#include <cstdlib>

#include "host/protocol/messages.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view packet(reinterpret_cast<const char *>(data), size);
    const auto request = protocol::DecodeAny<protocol::Request>(packet);
    if (!request)
        return 0;
    const auto again = std::visit([](const auto &message) { return protocol::Encode(message); }, *request);
    if (!again || again->View() != packet)
        std::abort();
    return 0;
}
