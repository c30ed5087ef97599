// SPDX-License-Identifier: Apache-2.0
// Word of tokens that come and go: cards in readers, and USB devices that may be tokens without a reader.
#pragma once

#include <functional>
#include <memory>
#include <thread>

#include <libudev.h>

#include "host/service/descriptor.h"
#include "host/service/tokens/card_watch.h"

namespace host {

class TokenWatch
{
public:
    // `changed` is called by a thread of this object's own, once for a storm of changes. Throws
    // std::system_error.
    explicit TokenWatch(std::function<void()> changed);
    ~TokenWatch();
    TokenWatch(const TokenWatch &) = delete;
    TokenWatch &operator=(const TokenWatch &) = delete;

private:
    template <auto Free>
    struct Release
    {
        template <typename T>
        void operator()(T *object) const
        {
            Free(object);
        }
    };

    void Run();
    bool Await(int milliseconds);
    bool TakeCards(bool readable);
    bool TakeUsbDevices(bool readable);
    void WatchCards();
    void WatchUsb();

    const std::function<void()> m_changed;
    const Descriptor m_end;
    std::shared_ptr<CardWatch> m_cards; // null where it cannot run
    std::unique_ptr<udev, Release<udev_unref>> m_udev;
    std::unique_ptr<udev_monitor, Release<udev_monitor_unref>> m_usb; // null where it cannot be watched
    bool m_noticed = false;
    std::thread m_thread;
};

} // namespace host
