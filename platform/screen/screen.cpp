// SPDX-License-Identifier: Apache-2.0
// The public face of the screen. It holds nothing: the state belongs to the application.
#include "pbe/screen.h"

#include "platform/application.h"

using pbe::Application;

QPbeScreen *QPbeScreen::Current()
{
    static QPbeScreen s_screen;
    return &s_screen;
}

void QPbeScreen::TurnOnScreenRepaint()
{
    if (Application *application = Application::Current())
        application->repaint.Open();
}

void QPbeScreen::TurnOffScreenRepaint()
{
    if (Application *application = Application::Current())
        application->repaint.Close();
}

void QPbeScreen::SetKeyboardLayout(const QString &identifier)
{
    if (Application *application = Application::Current())
        application->keyboard.SetLayout(identifier);
}

void QPbeScreen::SetPointerVisible(bool visible)
{
    if (Application *application = Application::Current())
        application->pointer.SetVisible(visible);
}

bool QPbeScreen::IsPointerVisible() const
{
    const Application *application = Application::Current();
    return !application || application->pointer.IsVisible();
}
