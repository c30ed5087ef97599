// SPDX-License-Identifier: Apache-2.0
// The pointing devices of the kernel, as udev classifies them: what counts on a framebuffer. Without a
// running udev there are none, and no word of changes; that is logged and is no error.
#include "platform/devices/pointing_devices.h"

#include <utility>

#include "platform/devices/udev.h"

namespace pbe {

namespace {

constexpr const char *kSubsystem = "input";
constexpr const char *kPointingProperties[] = {"ID_INPUT_MOUSE", "ID_INPUT_TOUCHPAD", "ID_INPUT_TOUCHSCREEN",
                                               "ID_INPUT_TABLET", "ID_INPUT_POINTINGSTICK"};

class UdevDevices : public PointingDevices
{
public:
    int Count() override;
    void Watch(std::function<void()> changed) override;

private:
    Udev m_udev{udev_new()};
    UdevWatch m_watch;
};

int UdevDevices::Count()
{
    const UdevEnumeration enumeration(m_udev ? udev_enumerate_new(m_udev.get()) : nullptr);
    if (!enumeration)
        return 0;
    udev_enumerate_add_match_subsystem(enumeration.get(), kSubsystem);
    // A device has several nodes; this is the one that programs read it by.
    udev_enumerate_add_match_sysname(enumeration.get(), "event*");
    for (const char *property : kPointingProperties)
        udev_enumerate_add_match_property(enumeration.get(), property, "1");
    if (udev_enumerate_scan_devices(enumeration.get()) < 0)
        return 0;
    int count = 0;
    udev_list_entry *entry = udev_enumerate_get_list_entry(enumeration.get());
    for (; entry; entry = udev_list_entry_get_next(entry))
        ++count;
    return count;
}

void UdevDevices::Watch(std::function<void()> changed)
{
    m_watch.Start(kSubsystem, "pointing devices", std::move(changed));
}

} // namespace

std::unique_ptr<PointingDevices> MakeUdevDevices()
{
    return std::make_unique<UdevDevices>();
}

} // namespace pbe
