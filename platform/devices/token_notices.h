// SPDX-License-Identifier: Apache-2.0
// Tells the windows when tokens come and go: cards in readers, and USB devices that may be tokens without a
// reader.
#pragma once

#include <optional>
#include <string_view>

#include <QSocketNotifier>
#include <QTimer>

#include "platform/devices/card_watch.h"
#include "platform/devices/udev.h"

namespace pbe {

class TokenNotices
{
public:
    TokenNotices();
    ~TokenNotices();
    TokenNotices(const TokenNotices &) = delete;
    TokenNotices &operator=(const TokenNotices &) = delete;

    // Called once.
    void Watch();

private:
    void WatchCards();
    void OnUsbDevice(udev_device *device);
    void Settle();
    void Tell();

    std::shared_ptr<CardWatch> m_cards; // null where it cannot run
    std::optional<QSocketNotifier> m_notifier;
    UdevWatch m_usb;
    QTimer m_settle;
    int m_knownCards = 0;
    int m_usbBalance = 0; // devices that came, less those that went
};

} // namespace pbe
