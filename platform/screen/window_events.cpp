// SPDX-License-Identifier: Apache-2.0
#include "platform/screen/window_events.h"

#include <QApplication>
#include <QWidget>

#include "pbe/application.h"
#include "pbe/events.h"
#include "platform/application.h"

namespace pbe {

namespace {

bool TakesNotice(const QWidget *window)
{
    const Qt::WindowType type = window->windowType();
    return window->isVisible() && type != Qt::Popup && type != Qt::ToolTip;
}

} // namespace

void PostToWindows(int type, std::initializer_list<int> replaced)
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (!TakesNotice(window))
            continue;
        for (const int old : replaced)
            QCoreApplication::removePostedEvents(window, old);
        QCoreApplication::postEvent(window, new QEvent(static_cast<QEvent::Type>(type)));
    }
}

} // namespace pbe

void PbeTellTokens(bool added)
{
    using namespace pbe;
    if (Application::Current())
        PostToWindows(added ? kTokenAdded : kTokenRemoved, {kTokenAdded, kTokenRemoved});
}
