// SPDX-License-Identifier: Apache-2.0
// The toolkit's connection to the X server, and what is asked of the server past the toolkit. Without X11
// every call does nothing.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace pbe::x11 {

struct FreeReply
{
    void operator()(void *reply) const { std::free(reply); }
};

template <typename Reply>
using Owned = std::unique_ptr<Reply, FreeReply>;

template <typename Reply>
Owned<Reply> Own(Reply *reply)
{
    return Owned<Reply>(reply);
}

// Null without X11.
xcb_connection_t *Connection();

// Waits until the server has carried out what was sent so far.
void Synchronize();

void ShowPointer(bool show);

// Has the server send this program a message, which comes behind all events that were on their way. Its name;
// 0 without X11.
std::uint32_t SendMarker();
// Whether a native event is that message.
bool IsMarker(const void *event, std::uint32_t marker);

} // namespace pbe::x11
