// SPDX-License-Identifier: Apache-2.0
// The screen, as the platform extends the toolkit. Needs a running QApplication; GUI thread only.
#pragma once

#include "pbe/export.h"

class QString;

class PBE_EXPORT QPbeScreen
{
public:
    // The screen of the running application. Never null; its state begins anew with every application
    // object: repaint on, pointer visible, no keyboard layout.
    static QPbeScreen *Current();

    // While repaint is off nothing that the application draws reaches the display: the last picture stands.
    // Turning it on again paints every window.
    void TurnOnScreenRepaint();
    void TurnOffScreenRepaint();

    // From now on keys type by this layout: an identifier of 8 hexadecimal digits, for example "00000407" for
    // German. One that the platform does not know leaves the layout in force and is logged. Keys that are
    // held stay what they were when they were pressed. Before the first call keys type what the window system
    // says.
    void SetKeyboardLayout(const QString &identifier);

    // Whether the pointer may be seen. Carried out under X11; on a framebuffer the toolkit shows the pointer
    // only while a mouse is connected, and the wish is kept without effect. Leaves the toolkit's stack of
    // override cursors alone.
    void SetPointerVisible(bool visible);
    bool IsPointerVisible() const;

private:
    QPbeScreen() = default;
};
