// SPDX-License-Identifier: Apache-2.0
#include "platform/screen/wait_sign.h"

#include <algorithm>

#include <QApplication>
#include <QPainter>

#include "platform/screen/painting.h"

namespace pbe {

namespace {

constexpr int kDots = 8;
constexpr int kSize = 28;
constexpr qreal kDotSize = 4.5;
constexpr qreal kFullTurn = 360;
// Above the bottom, of the window's height: under the pages and buttons, over the bottom row.
constexpr int kShareBelow = 12;
constexpr QRgb kColour = 0xFF006400;
constexpr qreal kFaintest = 0.15;

bool CanCarry(const QWidget *window)
{
    if (!window || !window->isVisible() || !window->updatesEnabled() || window->isMinimized())
        return false;
    const Qt::WindowType type = window->windowType();
    return type == Qt::Window || type == Qt::Dialog;
}

// Without a window manager none may be active.
QWidget *WindowInFront()
{
    for (QWidget *window : {QApplication::activeModalWidget(), QApplication::activeWindow()}) {
        if (CanCarry(window))
            return window;
    }
    const auto windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.rbegin(), windows.rend(), CanCarry);
    return found != windows.rend() ? *found : nullptr;
}

} // namespace

WaitSign::WaitSign()
{
    setObjectName(u"waitSign"_qs);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    resize(kSize, kSize);
}

WaitSign::~WaitSign()
{
    if (!isVisible())
        return;
    hide();
    parentWidget()->repaint(geometry());
    PaintPendingNow();
}

bool WaitSign::FindPlace()
{
    if (parentWidget())
        return true;
    QWidget *window = WindowInFront();
    if (!window)
        return false;
    setParent(window);
    move((window->width() - width()) / 2, window->height() - window->height() / kShareBelow - height());
    show();
    raise();
    return true;
}

void WaitSign::Turn()
{
    if (!FindPlace())
        return;
    m_step = (m_step + 1) % kDots;
    repaint();
    PaintPendingNow();
}

// The dots fade behind the one that leads.
void WaitSign::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.translate(rect().toRectF().center());
    painter.rotate(m_step * kFullTurn / kDots);
    constexpr qreal kRadius = (kSize - kDotSize) / 2;
    for (int dot = 0; dot < kDots; ++dot) {
        QColor colour = QColor::fromRgba(kColour);
        colour.setAlphaF(static_cast<float>(std::max(kFaintest, 1 - static_cast<qreal>(dot) / kDots)));
        painter.setBrush(colour);
        painter.drawEllipse(QPointF(0, -kRadius), kDotSize / 2, kDotSize / 2);
        painter.rotate(-kFullTurn / kDots);
    }
}

} // namespace pbe
