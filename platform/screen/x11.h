// SPDX-License-Identifier: Apache-2.0
// The toolkit's connection to the X server, and what is asked of the server past the toolkit. Without X11
// every call does nothing.
#pragma once

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

} // namespace pbe::x11
