// SPDX-License-Identifier: Apache-2.0
#include "platform/screen/x11.h"

#include <xcb/xfixes.h>

#include <QGuiApplication>

namespace pbe::x11 {

namespace {

// The server knows the hiding of the pointer from this version on.
constexpr std::uint32_t kHidingVersion = 4;

bool CanHidePointer(xcb_connection_t *connection)
{
    const auto *extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return false;
    const auto cookie =
        xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
    const auto version = Own(xcb_xfixes_query_version_reply(connection, cookie, nullptr));
    return version && version->major_version >= kHidingVersion;
}

} // namespace

xcb_connection_t *Connection()
{
    const auto *native = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return native ? native->connection() : nullptr;
}

void Synchronize()
{
    xcb_connection_t *connection = Connection();
    if (connection)
        Own(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

void ShowPointer(bool show)
{
    xcb_connection_t *connection = Connection();
    if (!connection || !CanHidePointer(connection))
        return;
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen.rem > 0; xcb_screen_next(&screen)) {
        if (show)
            xcb_xfixes_show_cursor(connection, screen.data->root);
        else
            xcb_xfixes_hide_cursor(connection, screen.data->root);
    }
    xcb_flush(connection);
}

} // namespace pbe::x11
