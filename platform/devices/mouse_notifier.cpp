// SPDX-License-Identifier: Apache-2.0
#include "pbe/mouse_notifier.h"

#include "platform/application.h"

int QPbeMouseNotifier::GetMousecount()
{
    pbe::Application *application = pbe::Application::Current();
    return application ? application->hotPlug.CountPointingDevices() : 0;
}
