// The screen, as the platform extends the toolkit. Needs a running QApplication; GUI thread only.
#pragma once

#include "pbe/export.h"

class PBE_EXPORT QPbeScreen
{
public:
    // The screen of the running application. Never null; its state begins anew with every application
    // object: repaint on, pointer visible.
    static QPbeScreen *Current();

    // While repaint is off nothing that the application draws reaches the display: the last picture stands.
    // Turning it on again paints every window.
    void TurnOnScreenRepaint();
    void TurnOffScreenRepaint();

    // Whether the pointer may be seen. Carried out under X11; on a framebuffer the toolkit shows the pointer
    // only while a mouse is connected, and the wish is kept without effect. Leaves the toolkit's stack of
    // override cursors alone.
    void SetPointerVisible(bool visible);
    bool IsPointerVisible() const;

private:
    QPbeScreen() = default;
};
