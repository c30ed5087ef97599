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

// To a window that nobody else knows, which is gone by the time that the message comes.
std::uint32_t SendMarker()
{
    xcb_connection_t *connection = Connection();
    if (!connection)
        return 0;
    const xcb_window_t window = xcb_generate_id(connection);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = window;
    message.type = XCB_ATOM_INTEGER;
    xcb_send_event(connection, false, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&message));
    xcb_destroy_window(connection, window);
    xcb_flush(connection);
    return window;
}

bool IsMarker(const void *event, std::uint32_t marker)
{
    const auto *message = static_cast<const xcb_client_message_event_t *>(event);
    return (message->response_type & ~0x80) == XCB_CLIENT_MESSAGE && message->window == marker;
}

} // namespace pbe::x11
