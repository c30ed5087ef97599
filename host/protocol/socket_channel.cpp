// SPDX-License-Identifier: Apache-2.0
#include "host/protocol/socket_channel.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace protocol {
namespace {

template <typename Call>
auto Repeat(const Call &call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

int OptionOf(int descriptor, int option)
{
    int value = -1;
    socklen_t size = sizeof value;
    return getsockopt(descriptor, SOL_SOCKET, option, &value, &size) == 0 ? value : -1;
}

} // namespace

std::pair<int, int> SocketChannel::MakeSockets()
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::system_error(errno, std::generic_category(), "no socket to the screen");
    return {ends[0], ends[1]};
}

bool SocketChannel::IsUsable(int descriptor)
{
    sockaddr peer{};
    socklen_t size = sizeof peer;
    return OptionOf(descriptor, SO_DOMAIN) == AF_UNIX && OptionOf(descriptor, SO_TYPE) == SOCK_SEQPACKET &&
           getpeername(descriptor, &peer, &size) == 0;
}

SocketChannel::SocketChannel(int descriptor)
    : m_descriptor(descriptor)
{
    fcntl(m_descriptor, F_SETFD, FD_CLOEXEC);
}

bool SocketChannel::Send(std::string_view packet)
{
    const auto sent =
        Repeat([&] { return send(m_descriptor, packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT); });
    return sent == static_cast<ssize_t>(packet.size());
}

// Without a place for descriptors the kernel closes those that come, and says that there were some.
Received SocketChannel::Receive(Secret *packet, Limit limit)
{
    packet->SetSize(0);
    if (m_descriptor < 0)
        return Received::Gone;
    if (!WaitReadable(limit))
        return Received::Nothing;
    iovec room{packet->Buffer(), std::min(packet->Capacity(), kMaxPacket)};
    msghdr message{};
    message.msg_iov = &room;
    message.msg_iovlen = 1;
    const ssize_t size = Repeat([&] { return recvmsg(m_descriptor, &message, MSG_DONTWAIT); });
    if (size < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
        return Received::Nothing;
    if (size <= 0)
        return Received::Gone;
    packet->SetSize(static_cast<std::size_t>(size));
    return (message.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) == 0 ? Received::Packet : Received::Bad;
}

// A signal does not make the time any longer.
bool SocketChannel::WaitReadable(Limit limit) const
{
    const Deadline deadline(limit);
    pollfd entry{m_descriptor, POLLIN, 0};
    return Repeat([&] {
               const Limit left = deadline.Left();
               return poll(&entry, 1, left ? static_cast<int>(left->count()) : -1);
           }) > 0;
}

void SocketChannel::Close()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
    m_descriptor = -1;
}

} // namespace protocol
