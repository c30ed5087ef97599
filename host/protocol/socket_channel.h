// SPDX-License-Identifier: Apache-2.0
// A channel over a socket of packets, to another process.
#pragma once

#include "host/protocol/channel.h"

namespace protocol {

class SocketChannel final : public Channel
{
public:
    // Of both ends, close-on-exec; throws std::system_error.
    static std::pair<int, int> MakeSockets();
    // Whether `descriptor`, which somebody else has handed down, is a connected socket of this type.
    static bool IsUsable(int descriptor);

    // Owns the descriptor, which becomes close-on-exec.
    explicit SocketChannel(int descriptor);
    ~SocketChannel() override { Close(); }
    SocketChannel(const SocketChannel &) = delete;
    SocketChannel &operator=(const SocketChannel &) = delete;

    [[nodiscard]] bool Send(std::string_view packet) override;
    [[nodiscard]] Received Receive(Secret *packet, Limit limit) override;
    int Descriptor() const override { return m_descriptor; }
    void Close() override;

private:
    bool WaitReadable(Limit limit) const;

    int m_descriptor;
};

} // namespace protocol
