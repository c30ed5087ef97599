#include "application.h"

#include <QApplication>

namespace pbe {

namespace {

std::unique_ptr<Application> s_current;

void Finish()
{
    s_current.reset();
}

// The toolkit calls this for every application object that is made, and Finish at the start of its
// destructor.
void Start()
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return;
    s_current = std::make_unique<Application>();
    qAddPostRoutine(Finish);
}

Q_COREAPP_STARTUP_FUNCTION(Start)

} // namespace

Application *Application::Current()
{
    return s_current.get();
}

} // namespace pbe
