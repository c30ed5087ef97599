// SPDX-License-Identifier: Apache-2.0
#include "platform/devices/pointing_devices.h"

#include <QGuiApplication>

#include "platform/screen/x11.h"

namespace pbe {

std::unique_ptr<PointingDevices> PointingDevices::OfThisPlatform()
{
    if (x11::Connection())
        return MakeX11Devices();
    const QString platform = QGuiApplication::platformName();
    if (platform == u"offscreen" || platform == u"minimal")
        return nullptr;
    return MakeUdevDevices();
}

} // namespace pbe
