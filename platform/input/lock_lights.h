// SPDX-License-Identifier: Apache-2.0
// The lights of Caps Lock and Num Lock, on a framebuffer, where nobody else sets them.
#pragma once

namespace pbe {

// Goes by the console, which has the lights of all keyboards, also of those that are plugged in later. Does
// nothing where the console is out of reach.
class LockLights
{
public:
    LockLights();
    // Gives the lights back to the console.
    ~LockLights();
    LockLights(const LockLights &) = delete;
    LockLights &operator=(const LockLights &) = delete;

    // Whether the keyboards come with Num Lock on, as firmware may leave it.
    bool StartsWithNumLock() const;

    void Show(bool capsLock, bool numLock);

private:
    int m_console;
    // Lights of linux/kd.h; none that there could be before the first time.
    int m_shown = -1;
};

} // namespace pbe
