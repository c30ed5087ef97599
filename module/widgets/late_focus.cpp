// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/late_focus.h"

#include <utility>

#include <QApplication>
#include <QBasicTimer>
#include <QPointer>
#include <QWidget>

namespace {

bool IsInput(QEvent::Type type)
{
    return type == QEvent::KeyPress || type == QEvent::ShortcutOverride || type == QEvent::MouseButtonPress;
}

void FocusIfVisible(QWidget *widget)
{
    if (widget->isVisible())
        widget->setFocus();
}

class LateFocus : public QObject
{
public:
    LateFocus()
        : QObject(qApp)
    {
        qApp->installEventFilter(this);
    }

    void Await(QWidget *widget)
    {
        m_widget = widget;
        m_loopTurned.start(0, this);
    }

protected:
    // The window system's window sees an event first: the widget that gets it is chosen behind this.
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (m_widget && IsInput(event->type()))
            Give();
        return false;
    }
    void timerEvent(QTimerEvent *) override { Give(); }

private:
    void Give()
    {
        m_loopTurned.stop();
        if (QWidget *widget = std::exchange(m_widget, nullptr))
            FocusIfVisible(widget);
    }

    QPointer<QWidget> m_widget;
    QBasicTimer m_loopTurned;
};

// Its application may be followed by another.
QPointer<LateFocus> s_lateFocus;

} // namespace

void GiveFocus(QWidget *widget)
{
    if (!s_lateFocus)
        s_lateFocus = new LateFocus;
    FocusIfVisible(widget);
    s_lateFocus->Await(widget);
}
