// SPDX-License-Identifier: Apache-2.0
// What a screen reads: the replies, each to its question, and the events; and what the service reads of a
// PKCS#11 module's process, which is as little to be believed. A packet that is accepted is the only way to
// write its message.
#include <cstdlib>

#include "host/protocol/token_messages.h"

namespace {

using Message =
    std::variant<protocol::HelloReply, protocol::TryPasswordReply, protocol::TryTokenReply,
                 protocol::CheckReplaceableReply, protocol::ReplacePasswordReply,
                 protocol::RecoveryBeginReply, protocol::RecoveryEntropyReply, protocol::RecoveryFinishReply,
                 protocol::ForgetReply, protocol::StartReply, protocol::Tokens, protocol::Stop,
                 protocol::ListTokensReply, protocol::LogInReply, protocol::Unwrap::Reply,
                 protocol::UnwrapByNextKey::Reply, protocol::LogOutReply>;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view packet(reinterpret_cast<const char *>(data), size);
    const auto message = protocol::DecodeAny<Message>(packet);
    if (!message)
        return 0;
    const auto again = std::visit([](const auto &one) { return protocol::Encode(one); }, *message);
    if (!again || again->View() != packet)
        std::abort();
    return 0;
}
