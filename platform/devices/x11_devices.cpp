// SPDX-License-Identifier: Apache-2.0
// The pointing devices of the X server: the enabled slave pointers, without the server's own for tests.
#include "platform/devices/pointing_devices.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include <xcb/xinput.h>

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>

#include "platform/screen/x11.h"

namespace pbe {

namespace {

// A server without the extension has its core pointer and nothing else.
constexpr int kCorePointerOnly = 1;
constexpr std::string_view kTestDeviceProperty = "XTEST Device";

xcb_atom_t TestDeviceAtom(xcb_connection_t *connection)
{
    const auto cookie =
        xcb_intern_atom(connection, true, kTestDeviceProperty.size(), kTestDeviceProperty.data());
    const auto reply = x11::Own(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::vector<xcb_input_device_id_t> SlavePointers(const xcb_input_xi_query_device_reply_t *reply)
{
    std::vector<xcb_input_device_id_t> devices;
    auto device = xcb_input_xi_query_device_infos_iterator(reply);
    for (; device.rem > 0; xcb_input_xi_device_info_next(&device)) {
        if (device.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER && device.data->enabled)
            devices.push_back(device.data->deviceid);
    }
    return devices;
}

bool IsTestDevice(xcb_connection_t *connection, xcb_input_device_id_t device, xcb_atom_t property)
{
    const auto cookie =
        xcb_input_xi_get_property(connection, device, false, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 0);
    const auto reply = x11::Own(xcb_input_xi_get_property_reply(connection, cookie, nullptr));
    return reply && reply->type != XCB_ATOM_NONE;
}

class X11Devices : public PointingDevices, public QAbstractNativeEventFilter
{
public:
    int Count() override;
    void Watch(std::function<void()> changed) override;

    bool nativeEventFilter(const QByteArray &kind, void *message, qintptr *result) override;

private:
    std::function<void()> m_changed;
    std::uint8_t m_extension = 0;
};

int X11Devices::Count()
{
    xcb_connection_t *connection = x11::Connection();
    const auto *extension = xcb_get_extension_data(connection, &xcb_input_id);
    if (!extension || !extension->present)
        return kCorePointerOnly;
    const auto cookie = xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL);
    const auto reply = x11::Own(xcb_input_xi_query_device_reply(connection, cookie, nullptr));
    if (!reply)
        return kCorePointerOnly;
    const auto devices = SlavePointers(reply.get());
    const xcb_atom_t property = TestDeviceAtom(connection);
    return static_cast<int>(std::count_if(devices.begin(), devices.end(), [&](xcb_input_device_id_t device) {
        return property == XCB_ATOM_NONE || !IsTestDevice(connection, device, property);
    }));
}

// The toolkit has asked the server for word of changes already; asking again would replace its choice of
// events.
void X11Devices::Watch(std::function<void()> changed)
{
    const auto *extension = xcb_get_extension_data(x11::Connection(), &xcb_input_id);
    if (!extension || !extension->present)
        return;
    m_extension = extension->major_opcode;
    m_changed = std::move(changed);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

bool X11Devices::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_ge_generic_event_t *>(message);
    if ((event->response_type & ~0x80) == XCB_GE_GENERIC && event->extension == m_extension &&
        event->event_type == XCB_INPUT_HIERARCHY)
        m_changed();
    return false;
}

} // namespace

std::unique_ptr<PointingDevices> MakeX11Devices()
{
    return std::make_unique<X11Devices>();
}

} // namespace pbe
