// SPDX-License-Identifier: Apache-2.0
#include "host/service/virtual_terminal.h"

#include <linux/kd.h>
#include <sys/ioctl.h>
#include <termios.h>

namespace host {

std::optional<VirtualTerminal> VirtualTerminal::At(int descriptor)
{
    VirtualTerminal terminal(descriptor);
    if (ioctl(descriptor, KDGETMODE, &terminal.m_display) != 0 ||
        ioctl(descriptor, KDGKBMODE, &terminal.m_keyboard) != 0 ||
        ioctl(descriptor, VT_GETMODE, &terminal.m_switching) != 0)
        return std::nullopt;
    if (terminal.IsLeftDead()) {
        terminal.m_display = KD_TEXT;
        terminal.m_keyboard = K_UNICODE;
    }
    return terminal;
}

// By a program of this kind that was killed with its screen. Others that draw see to it themselves that one
// can switch to another terminal.
bool VirtualTerminal::IsLeftDead() const
{
    return m_display == KD_GRAPHICS && m_keyboard == K_OFF && m_switching.mode == VT_AUTO;
}

void VirtualTerminal::GiveToPicture() const
{
    ioctl(m_descriptor, KDSKBMODE, K_OFF);
    ioctl(m_descriptor, KDSETMODE, KD_GRAPHICS);
}

// Switching is answered by the process that asks to: what another one does stays with it.
void VirtualTerminal::Restore() const
{
    constexpr int kLightsByKeyboard = 0xFF;
    if (m_switching.mode == VT_AUTO)
        ioctl(m_descriptor, VT_SETMODE, &m_switching);
    ioctl(m_descriptor, KDSKBMODE, m_keyboard);
    ioctl(m_descriptor, KDSETMODE, m_display);
    ioctl(m_descriptor, KDSETLED, kLightsByKeyboard);
}

void VirtualTerminal::Forget() const
{
    tcflush(m_descriptor, TCIFLUSH);
}

} // namespace host
