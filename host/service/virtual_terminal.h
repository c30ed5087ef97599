// SPDX-License-Identifier: Apache-2.0
// One of the kernel's own consoles, on this computer's screen and keyboard: what it shows, and where its keys
// go.
#pragma once

#include <optional>

#include <linux/vt.h>

namespace host {

class VirtualTerminal
{
public:
    // Remembers how it is, to be restored; nothing when `descriptor`, which is not owned, is no such
    // terminal.
    static std::optional<VirtualTerminal> At(int descriptor);

    // For drawing on the framebuffer: no text is drawn over the picture, and no key reaches this terminal,
    // where it would be echoed, and read by whoever comes after.
    void GiveToPicture() const;
    // Safe in a signal handler.
    void Restore() const;
    // What was typed and nobody has read.
    void Forget() const;

private:
    explicit VirtualTerminal(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    bool IsLeftDead() const;

    int m_descriptor;
    int m_display = 0;
    int m_keyboard = 0;
    vt_mode m_switching{};
};

} // namespace host
