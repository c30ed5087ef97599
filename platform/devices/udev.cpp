// SPDX-License-Identifier: Apache-2.0
#include "platform/devices/udev.h"

#include <string>
#include <utility>

#include "platform/own_log.h"

namespace pbe {

bool UdevWatch::Open(const char *subsystem)
{
    // "udev": the events come when udev has classified the device, unlike the kernel's own.
    m_monitor.reset(m_udev ? udev_monitor_new_from_netlink(m_udev.get(), "udev") : nullptr);
    return m_monitor &&
           udev_monitor_filter_add_match_subsystem_devtype(m_monitor.get(), subsystem, nullptr) >= 0 &&
           udev_monitor_enable_receiving(m_monitor.get()) >= 0;
}

void UdevWatch::Start(const char *subsystem, const char *what, std::function<void()> changed)
{
    if (!Open(subsystem)) {
        m_monitor.reset();
        LogOwn(kInformation, std::string("no notification of ") + what + ": udev cannot be watched");
        return;
    }
    m_notifier.emplace(udev_monitor_get_fd(m_monitor.get()), QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &*m_notifier,
                     [this, changed = std::move(changed)] {
                         while (const UdevDevice device{udev_monitor_receive_device(m_monitor.get())}) {
                         }
                         changed();
                     });
}

} // namespace pbe
