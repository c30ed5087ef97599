// SPDX-License-Identifier: Apache-2.0
#include "platform/devices/hot_plug.h"

#include <chrono>
#include <utility>

#include "pbe/events.h"
#include "platform/screen/window_events.h"

namespace pbe {

namespace {

using namespace std::chrono_literals;

// The watch begins when the first page stands. Nothing is missed: it starts by comparing.
constexpr auto kWatchDelay = 200ms;
// One device makes several notices, a hub a storm of them.
constexpr auto kSettleTime = 50ms;

} // namespace

HotPlug::HotPlug()
{
    for (QTimer *timer : {&m_watch, &m_settle})
        timer->setSingleShot(true);
    QObject::connect(&m_watch, &QTimer::timeout, &m_watch, [this] { Watch(); });
    QObject::connect(&m_settle, &QTimer::timeout, &m_settle, [this] { Compare(); });
    m_settle.setInterval(kSettleTime);
    m_watch.start(kWatchDelay);
}

int HotPlug::CountPointingDevices()
{
    const int count = Devices() ? Devices()->Count() : 0;
    if (!m_known)
        m_known = count;
    return count;
}

void HotPlug::Watch()
{
    if (!Devices())
        return;
    Devices()->Watch([this] {
        if (!m_settle.isActive())
            m_settle.start();
    });
    Compare();
}

void HotPlug::Compare()
{
    const int count = CountPointingDevices();
    const int known = *std::exchange(m_known, count);
    if (count != known)
        PostToWindows(count > known ? kMouseAdded : kMouseRemoved);
}

PointingDevices *HotPlug::Devices()
{
    if (!m_devices)
        m_devices = PointingDevices::OfThisPlatform();
    return m_devices.get();
}

} // namespace pbe
