// SPDX-License-Identifier: Apache-2.0
// udev's objects, and word of the devices of one kind as they come and go.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <libudev.h>

#include <QSocketNotifier>

#include "platform/layouts/unreference.h"

namespace pbe {

using Udev = std::unique_ptr<udev, layouts::Unreference<udev_unref>>;
using UdevEnumeration = std::unique_ptr<udev_enumerate, layouts::Unreference<udev_enumerate_unref>>;
using UdevMonitor = std::unique_ptr<udev_monitor, layouts::Unreference<udev_monitor_unref>>;
using UdevDevice = std::unique_ptr<udev_device, layouts::Unreference<udev_device_unref>>;

class UdevWatch
{
public:
    using Changed = std::function<void(udev_device *)>;

    // Calls `changed` in the GUI thread from now on for each device that udev has classified or lost. With a
    // null `deviceType` all of the subsystem count. False, logged with the name `what`, where udev cannot be
    // watched. Called once.
    bool Start(const char *subsystem, const char *deviceType, const char *what, Changed changed);

private:
    bool Open(const char *subsystem, const char *deviceType);

    Udev m_udev{udev_new()};
    UdevMonitor m_monitor;
    std::optional<QSocketNotifier> m_notifier;
};

} // namespace pbe
