#include "busy.h"

#include <QApplication>
#include <QWidget>

#include "application.h"
#include "pbe/application.h"
#include "x11.h"

namespace pbe {

namespace {

// Brings everything to the display without a turn of the event loop, which would process input and timers.
void PaintNow()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible())
            window->repaint();
    }
    // On a framebuffer the windows are put together, and the cursor drawn, by an update of the screen itself.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
    x11::Synchronize();
}

} // namespace

void Busy::Begin()
{
    // An override cursor, since line edits have a cursor of their own.
    if (m_depth++ == 0)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    PaintNow();
}

void Busy::End()
{
    if (m_depth > 0 && --m_depth == 0)
        QApplication::restoreOverrideCursor();
}

} // namespace pbe

void PbeSetBusy(bool busy)
{
    pbe::Application *application = pbe::Application::Current();
    if (!application)
        return;
    if (busy)
        application->busy.Begin();
    else
        application->busy.End();
}
