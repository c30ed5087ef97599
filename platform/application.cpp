// SPDX-License-Identifier: Apache-2.0
#include "platform/application.h"

#include <utility>

#include <QApplication>

#include "platform/screen/fonts.h"

namespace pbe {

namespace {

// Not owned by a static object: a process that exits inside its application must not take this apart.
Application *s_current = nullptr;

void Finish()
{
    delete std::exchange(s_current, nullptr);
}

// The toolkit calls this for every application object that is made, and Finish at the start of its
// destructor.
void Start()
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return;
    UseOwnFonts();
    s_current = new Application;
    qAddPostRoutine(Finish);
}

Q_COREAPP_STARTUP_FUNCTION(Start)

} // namespace

Application *Application::Current()
{
    return s_current;
}

} // namespace pbe
