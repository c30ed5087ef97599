// SPDX-License-Identifier: Apache-2.0
// What the service reads from whatever has taken a screen's place, and a PKCS#11 module's process from the
// service. A packet that is accepted is the only way to write its message.
#include <cstdlib>

#include "host/protocol/token_messages.h"

namespace {

template <typename Requests>
void Check(std::string_view packet)
{
    const auto request = protocol::DecodeAny<Requests>(packet);
    if (!request)
        return;
    const auto again = std::visit([](const auto &message) { return protocol::Encode(message); }, *request);
    if (!again || again->View() != packet)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view packet(reinterpret_cast<const char *>(data), size);
    Check<protocol::Request>(packet);
    Check<protocol::TokenRequest>(packet);
    return 0;
}
