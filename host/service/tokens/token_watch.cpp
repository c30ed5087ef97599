// SPDX-License-Identifier: Apache-2.0
#include "host/service/tokens/token_watch.h"

#include <cstring>
#include <string_view>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>

#include "host/log.h"

namespace host {
namespace {

// However many changes fall into this time, they are told once.
constexpr int kSettleTime = 50; // milliseconds

// Interface classes of tokens, as udev lists them (":030101:0b0000:"): card readers, which the card service
// may not serve, makers' own, and input devices, as which security keys appear. Not keyboards and mice for
// all.
bool MayBeToken(std::string_view interfaces)
{
    for (const std::string_view kind : {":0b", ":ff", ":0300"}) {
        if (interfaces.find(kind) != std::string_view::npos)
            return true;
    }
    return interfaces.empty();
}

bool ComesOrGoes(udev_device *device)
{
    const char *action = udev_device_get_action(device);
    const char *interfaces = udev_device_get_property_value(device, "ID_USB_INTERFACES");
    return action && (std::strcmp(action, "add") == 0 || std::strcmp(action, "remove") == 0) &&
           MayBeToken(interfaces ? interfaces : "");
}

} // namespace

TokenWatch::TokenWatch(std::function<void()> changed)
    : m_changed(std::move(changed))
    , m_end(Descriptor::Checked(eventfd(0, EFD_CLOEXEC)))
{
    WatchCards();
    WatchUsb();
    m_thread = std::thread([this] { Run(); });
}

TokenWatch::~TokenWatch()
{
    eventfd_write(m_end.Number(), 1);
    m_thread.join();
    if (m_cards)
        m_cards->Stop();
}

void TokenWatch::WatchCards()
try {
    m_cards = std::make_shared<CardWatch>();
    m_cards->Start();
} catch (const std::system_error &) {
    m_cards.reset();
    Log(kLogErrors, "No word of cards that come and go: there is no thread to be had.");
}

// "udev": the events come when udev has classified the device, unlike the kernel's own.
void TokenWatch::WatchUsb()
{
    m_udev.reset(udev_new());
    m_usb.reset(m_udev ? udev_monitor_new_from_netlink(m_udev.get(), "udev") : nullptr);
    if (m_usb && udev_monitor_filter_add_match_subsystem_devtype(m_usb.get(), "usb", "usb_device") >= 0 &&
        udev_monitor_enable_receiving(m_usb.get()) >= 0)
        return;
    m_usb.reset();
    Log(kLogCalls, "No word of tokens without a reader: udev cannot be watched.");
}

// What comes while changes settle is told with them.
void TokenWatch::Run()
{
    while (Await(-1)) {
        if (!std::exchange(m_noticed, false))
            continue;
        if (poll(nullptr, 0, kSettleTime) < 0 || !Await(0))
            return;
        m_noticed = false;
        m_changed();
    }
}

// False at the end.
bool TokenWatch::Await(int milliseconds)
{
    pollfd entries[] = {{m_end.Number(), POLLIN, 0},
                        {m_cards ? m_cards->NoticeFile() : -1, POLLIN, 0},
                        {m_usb ? udev_monitor_get_fd(m_usb.get()) : -1, POLLIN, 0}};
    poll(entries, std::size(entries), milliseconds);
    m_noticed |= TakeCards(entries[1].revents != 0);
    m_noticed |= TakeUsbDevices(entries[2].revents != 0);
    return entries[0].revents == 0;
}

bool TokenWatch::TakeCards(bool readable)
{
    if (readable)
        m_cards->TakeNotice();
    return readable;
}

bool TokenWatch::TakeUsbDevices(bool readable)
{
    bool any = false;
    while (readable) {
        const std::unique_ptr<udev_device, Release<udev_device_unref>> device(
            udev_monitor_receive_device(m_usb.get()));
        if (!device)
            break;
        any |= ComesOrGoes(device.get());
    }
    return any;
}

} // namespace host
