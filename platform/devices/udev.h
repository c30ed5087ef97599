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
    // Calls `changed` in the GUI thread from now on when udev has classified or lost devices. Where udev
    // cannot be watched that is logged with the name `what`. Called once.
    void Start(const char *subsystem, const char *what, std::function<void()> changed);

private:
    bool Open(const char *subsystem);

    Udev m_udev{udev_new()};
    UdevMonitor m_monitor;
    std::optional<QSocketNotifier> m_notifier;
};

} // namespace pbe
