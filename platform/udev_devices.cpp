// The pointing devices of the kernel, as udev classifies them: what counts on a framebuffer. Without a
// running udev there are none, and no word of changes; that is logged and is no error.
#include "pointing_devices.h"

#include <optional>
#include <string_view>
#include <utility>

#include <libudev.h>

#include <QSocketNotifier>

#include "pbe/log.h"

namespace pbe {

namespace {

constexpr std::uint32_t kInformation = 700;
constexpr std::uint32_t kNamedSeverity = 5;
constexpr const char *kSubsystem = "input";
constexpr const char *kPointingProperties[] = {"ID_INPUT_MOUSE", "ID_INPUT_TOUCHPAD", "ID_INPUT_TOUCHSCREEN",
                                               "ID_INPUT_TABLET", "ID_INPUT_POINTINGSTICK"};

template <auto Unref>
struct Unreference
{
    template <typename T>
    void operator()(T *object) const
    {
        Unref(object);
    }
};

using Udev = std::unique_ptr<udev, Unreference<udev_unref>>;
using Enumeration = std::unique_ptr<udev_enumerate, Unreference<udev_enumerate_unref>>;
using Monitor = std::unique_ptr<udev_monitor, Unreference<udev_monitor_unref>>;
using Device = std::unique_ptr<udev_device, Unreference<udev_device_unref>>;

class UdevDevices : public PointingDevices
{
public:
    int Count() override;
    void Watch(std::function<void()> changed) override;

private:
    bool OpenMonitor();

    Udev m_udev{udev_new()};
    Monitor m_monitor;
    std::optional<QSocketNotifier> m_notifier;
};

int UdevDevices::Count()
{
    const Enumeration enumeration(m_udev ? udev_enumerate_new(m_udev.get()) : nullptr);
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

bool UdevDevices::OpenMonitor()
{
    // "udev": the events come when udev has classified the device, unlike the kernel's own.
    m_monitor.reset(m_udev ? udev_monitor_new_from_netlink(m_udev.get(), "udev") : nullptr);
    return m_monitor &&
           udev_monitor_filter_add_match_subsystem_devtype(m_monitor.get(), kSubsystem, nullptr) >= 0 &&
           udev_monitor_enable_receiving(m_monitor.get()) >= 0;
}

void UdevDevices::Watch(std::function<void()> changed)
{
    if (!OpenMonitor()) {
        m_monitor.reset();
        PbeLogMessage(kInformation, kNamedSeverity, "PBE     ",
                      "no notification of pointing devices: udev cannot be watched\r\n");
        return;
    }
    m_notifier.emplace(udev_monitor_get_fd(m_monitor.get()), QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &*m_notifier,
                     [this, changed = std::move(changed)] {
                         while (Device(udev_monitor_receive_device(m_monitor.get())))
                             continue;
                         changed();
                     });
}

} // namespace

std::unique_ptr<PointingDevices> MakeUdevDevices()
{
    return std::make_unique<UdevDevices>();
}

} // namespace pbe
