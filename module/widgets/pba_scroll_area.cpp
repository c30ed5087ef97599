// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/pba_scroll_area.h"

#include <QApplication>
#include <QEvent>

namespace {

// Above and below the focus, so that what belongs to it shows as well.
constexpr int kMargin = 30;

} // namespace

PbaScrollArea::PbaScrollArea(QWidget *parent)
    : QScrollArea(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    connect(qApp, &QApplication::focusChanged, this, &PbaScrollArea::ShowFocus);
}

// The content that is destroyed next may have the focus, and the application tells of it.
PbaScrollArea::~PbaScrollArea()
{
    disconnect(qApp, nullptr, this, nullptr);
}

QSize PbaScrollArea::sizeHint() const
{
    return widget() ? widget()->sizeHint() : QScrollArea::sizeHint();
}

QSize PbaScrollArea::minimumSizeHint() const
{
    return {0, 0};
}

bool PbaScrollArea::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(object, event);
}

void PbaScrollArea::ShowFocus(QWidget *, QWidget *focus)
{
    if (focus && widget() && widget()->isAncestorOf(focus))
        ensureWidgetVisible(focus, 0, kMargin);
}
