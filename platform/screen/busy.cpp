// SPDX-License-Identifier: Apache-2.0
#include "platform/screen/busy.h"

#include <QApplication>

#include "platform/application.h"
#include "platform/screen/painting.h"
#include "pbe/application.h"

namespace pbe {

void Busy::Begin()
{
    // An override cursor, since line edits have a cursor of their own.
    if (m_depth++ == 0)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    PaintWindowsNow();
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
