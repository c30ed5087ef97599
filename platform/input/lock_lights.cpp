// SPDX-License-Identifier: Apache-2.0
#include "platform/input/lock_lights.h"

#include <array>
#include <filesystem>
#include <iterator>
#include <set>
#include <utility>

#include <fcntl.h>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace pbe {

namespace {

constexpr const char *kDirectory = "/dev/input";

using Lights = std::array<unsigned char, LED_CNT / 8>;

bool Has(const Lights &lights, int light)
{
    return (lights[static_cast<std::size_t>(light / 8)] >> (light % 8) & 1) != 0;
}

input_event Event(int type, int code, bool on)
{
    input_event event{};
    event.type = static_cast<decltype(event.type)>(type);
    event.code = static_cast<decltype(event.code)>(code);
    event.value = on;
    return event;
}

std::set<std::string> EventDevices()
{
    std::set<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(kDirectory, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (name.starts_with("event"))
            names.insert(name);
    }
    return names;
}

} // namespace

LockLights::~LockLights()
{
    Show(false, m_startsWithNumLock);
    for (const auto &[name, device] : m_devices) {
        if (device >= 0)
            close(device);
    }
}

// Keyboards come and go. Each stays open, since to close one takes the kernel a while.
void LockLights::Look()
{
    const std::set<std::string> names = EventDevices();
    for (auto known = m_devices.begin(); known != m_devices.end();) {
        const bool gone = names.count(known->first) == 0;
        if (gone && known->second >= 0)
            close(known->second);
        known = gone ? m_devices.erase(known) : std::next(known);
    }
    for (const std::string &name : names) {
        if (m_devices.count(name) == 0)
            m_devices[name] = Open(name);
    }
}

int LockLights::Open(const std::string &name)
{
    const std::string path = std::string(kDirectory) + "/" + name;
    const int device = open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    Lights there{}, lit{};
    if (device >= 0 && ioctl(device, EVIOCGBIT(EV_LED, sizeof there), there.data()) >= 0 &&
        Has(there, LED_CAPSL)) {
        const bool isKnown = ioctl(device, EVIOCGLED(sizeof lit), lit.data()) >= 0;
        m_startsWithNumLock = m_startsWithNumLock || (m_shown < 0 && isKnown && Has(lit, LED_NUML));
        return device;
    }
    if (device >= 0)
        close(device);
    return -1;
}

void LockLights::Show(bool capsLock, bool numLock)
{
    const int lights = (capsLock ? 1 << LED_CAPSL : 0) | (numLock ? 1 << LED_NUML : 0);
    if (std::exchange(m_shown, lights) == lights)
        return;
    Look();
    const input_event events[] = {Event(EV_LED, LED_CAPSL, capsLock), Event(EV_LED, LED_NUML, numLock),
                                  Event(EV_SYN, SYN_REPORT, false)};
    for (auto device = m_devices.begin(); device != m_devices.end();) {
        const bool gone = device->second >= 0 && write(device->second, events, sizeof events) < 0;
        if (gone)
            close(device->second);
        // Another one may have its name already.
        device = gone ? m_devices.erase(device) : std::next(device);
    }
}

} // namespace pbe
