// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/pba_page_stack.h"

#include <QApplication>

namespace {

constexpr int kColumnWidth = 420;
// Wide enough to take all the room that a screen of 800 pixels has, from the gap beside the pages too.
constexpr int kPreferredWidth = 520;

} // namespace

PbaPageStack::PbaPageStack(QWidget *parent)
    : QStackedWidget(parent)
{
    qApp->installEventFilter(this);
}

void PbaPageStack::ShowPage(int index)
{
    if (QWidget *page = widget(index); page && !m_styled.contains(page))
        StylePage(page);
    setCurrentIndex(index);
}

// The dialog's first show polishes the pages that are not shown too, and its style sheet styles them.
bool PbaPageStack::eventFilter(QObject *receiver, QEvent *event)
{
    const bool styles = event->type() == QEvent::Polish || event->type() == QEvent::StyleChange;
    return styles && receiver->isWidgetType() && IsUnstyled(static_cast<QWidget *>(receiver));
}

bool PbaPageStack::IsUnstyled(const QWidget *widget) const
{
    while (widget && !widget->isWindow() && widget->parentWidget() != this)
        widget = widget->parentWidget();
    return widget && !widget->isWindow() && !m_styled.contains(widget);
}

// Before it is shown, which lays it out.
void PbaPageStack::StylePage(QWidget *page)
{
    // Widgets that have come since then, which would be polished a second time.
    page->ensurePolished();
    m_styled.insert(page);
    const QList<QWidget *> widgets = QList{page} + page->findChildren<QWidget *>();
    for (const QEvent::Type type : {QEvent::StyleChange, QEvent::Polish}) {
        for (QWidget *widget : widgets) {
            QEvent event(type);
            QCoreApplication::sendEvent(widget, &event);
        }
    }
}

QSize PbaPageStack::sizeHint() const
{
    return {kPreferredWidth, minimumHeight()};
}

QSize PbaPageStack::minimumSizeHint() const
{
    return minimumSize();
}

void PbaPageStack::resizeEvent(QResizeEvent *event)
{
    const int side = qMax(0, (width() - kColumnWidth) / 2);
    setContentsMargins(side, 0, side, 0);
    QStackedWidget::resizeEvent(event);
}
