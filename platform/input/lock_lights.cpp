// SPDX-License-Identifier: Apache-2.0
#include "platform/input/lock_lights.h"

#include <utility>

#include <fcntl.h>
#include <linux/kd.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace pbe {

namespace {

// More than the lights that there are: the console shows its own locks again.
constexpr int kOwnLocks = 0xFF;

} // namespace

LockLights::LockLights()
    : m_console(open("/dev/tty0", O_RDWR | O_NOCTTY | O_CLOEXEC))
{
}

LockLights::~LockLights()
{
    if (m_console < 0)
        return;
    ioctl(m_console, KDSETLED, kOwnLocks);
    close(m_console);
}

bool LockLights::StartsWithNumLock() const
{
    char locks = 0;
    return ioctl(m_console, KDGKBLED, &locks) == 0 && (locks & K_NUMLOCK) != 0;
}

void LockLights::Show(bool capsLock, bool numLock)
{
    const int lights = (capsLock ? LED_CAP : 0) | (numLock ? LED_NUM : 0);
    if (std::exchange(m_shown, lights) != lights)
        ioctl(m_console, KDSETLED, lights);
}

} // namespace pbe
