// SPDX-License-Identifier: Apache-2.0
#include "platform/screen/repaint_gate.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QEvent>

#include "platform/screen/painting.h"

namespace pbe {

void RepaintGate::Close()
{
    if (std::exchange(m_closed, true))
        return;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        Hold(window);
    qApp->installEventFilter(this);
}

void RepaintGate::Open()
{
    if (!std::exchange(m_closed, false))
        return;
    qApp->removeEventFilter(this);
    for (const auto &window : std::exchange(m_held, {})) {
        if (window)
            window->setUpdatesEnabled(true);
    }
    for (const auto &receiver : std::exchange(m_owed, {})) {
        if (receiver)
            QCoreApplication::postEvent(receiver, new QEvent(QEvent::UpdateRequest));
    }
    PaintWindowsNow();
}

bool RepaintGate::eventFilter(QObject *receiver, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
        // Sent before a window reaches the display.
        if (receiver->isWidgetType())
            Hold(static_cast<QWidget *>(receiver));
        return false;
    case QEvent::UpdateRequest:
        return !receiver->isWidgetType() && !receiver->isWindowType() && Keep(receiver);
    default:
        return false;
    }
}

// Swallowing paint events would not do: the toolkit has erased by then, and repaint() asks nobody.
void RepaintGate::Hold(QWidget *window)
{
    if (!window->isWindow() || !window->updatesEnabled())
        return;
    window->setUpdatesEnabled(false);
    m_held.emplace_back(window);
}

// A framebuffer screen puts its windows together when it gets an update request: it would take away a window
// that closes. It asks for no second one before it got the first, so it is given one later.
bool RepaintGate::Keep(QObject *receiver)
{
    if (std::find(m_owed.begin(), m_owed.end(), receiver) == m_owed.end())
        m_owed.emplace_back(receiver);
    return true;
}

} // namespace pbe
