// SPDX-License-Identifier: Apache-2.0
// The lights of Caps Lock and Num Lock, on a framebuffer, where nobody else sets them.
#pragma once

#include <map>
#include <string>

namespace pbe {

// Goes by the keyboards themselves: the console has the lights of all of them, but sets them for its owner
// only, and a screen without rights is none.
class LockLights
{
public:
    LockLights() { Look(); }
    // Leaves the lights as they were found.
    ~LockLights();
    LockLights(const LockLights &) = delete;
    LockLights &operator=(const LockLights &) = delete;

    // Whether the keyboards come with Num Lock on, as firmware may leave it.
    bool StartsWithNumLock() const { return m_startsWithNumLock; }

    void Show(bool capsLock, bool numLock);

private:
    void Look();
    int Open(const std::string &name);

    // By the names of the input devices; -1 for those that have no such lights.
    std::map<std::string, int> m_devices;
    bool m_startsWithNumLock = false;
    // One bit a light; none that there could be before the first time.
    int m_shown = -1;
};

} // namespace pbe
