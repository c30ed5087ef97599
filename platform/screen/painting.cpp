// SPDX-License-Identifier: Apache-2.0
#include "platform/screen/painting.h"

#include <QApplication>
#include <QWidget>

#include "platform/screen/x11.h"

namespace pbe {

void PaintWindowsNow()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible())
            window->repaint();
    }
    PaintPendingNow();
}

void PaintPendingNow()
{
    // On a framebuffer the windows are put together, and the cursor drawn, by an update of the screen itself.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
    x11::Synchronize();
}

} // namespace pbe
