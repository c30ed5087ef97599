// SPDX-License-Identifier: Apache-2.0
#include "platform/devices/token_notices.h"

#include <chrono>
#include <cstring>
#include <system_error>
#include <utility>

#include "platform/own_log.h"
#include "pbe/events.h"
#include "platform/screen/window_events.h"

namespace pbe {

namespace {

using namespace std::chrono_literals;

// However many changes fall into this time, one event tells of them.
constexpr auto kSettleTime = 50ms;

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

} // namespace

TokenNotices::TokenNotices()
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(kSettleTime);
    QObject::connect(&m_settle, &QTimer::timeout, &m_settle, [this] { Tell(); });
}

TokenNotices::~TokenNotices()
{
    if (m_cards)
        m_cards->Stop();
}

void TokenNotices::Watch()
{
    WatchCards();
    m_usb.Start("usb", "usb_device", "tokens without a reader",
                [this](udev_device *device) { OnUsbDevice(device); });
}

void TokenNotices::WatchCards()
{
    auto cards = std::make_shared<CardWatch>();
    try {
        cards->Start();
    } catch (const std::system_error &) {
        LogOwn(kErrors, "no notification of cards: no thread to be had");
        return;
    }
    m_cards = std::move(cards);
    m_notifier.emplace(m_cards->NoticeFile(), QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &*m_notifier, [this] {
        m_cards->TakeNotice();
        Settle();
    });
}

void TokenNotices::OnUsbDevice(udev_device *device)
{
    const char *action = udev_device_get_action(device);
    const char *interfaces = udev_device_get_property_value(device, "ID_USB_INTERFACES");
    if (!action || !MayBeToken(interfaces ? interfaces : ""))
        return;
    if (std::strcmp(action, "add") == 0)
        ++m_usbBalance;
    else if (std::strcmp(action, "remove") == 0)
        --m_usbBalance;
    else
        return;
    Settle();
}

void TokenNotices::Settle()
{
    if (!m_settle.isActive())
        m_settle.start();
}

// Either event makes the list be read anew; where as many came as went, it is told by what there is now.
void TokenNotices::Tell()
{
    const int cards = m_cards ? m_cards->CountCards() : 0;
    const int balance = cards - std::exchange(m_knownCards, cards) + std::exchange(m_usbBalance, 0);
    const bool removed = balance < 0 || (balance == 0 && cards == 0);
    PostToWindows(removed ? kTokenRemoved : kTokenAdded, {kTokenAdded, kTokenRemoved});
}

} // namespace pbe
