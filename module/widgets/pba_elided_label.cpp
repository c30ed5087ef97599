// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/pba_elided_label.h"

#include <QPainter>
#include <QStyle>
#include <QTextLayout>

namespace {

constexpr int kAlwaysShown = 100;
constexpr char16_t kCut = u'\u2026';

} // namespace

QSize PbaElidedLabel::minimumSizeHint() const
{
    const QSize whole = sizeHint();
    return {qMin(whole.width(), kAlwaysShown), whole.height()};
}

void PbaElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawFrame(&painter);
    const QRect room = contentsRect();
    const QStringList lines = sizeHint().width() <= width() ? QStringList(text()) : BrokenLines(room);
    setToolTip(lines.last().endsWith(kCut) && lines.last() != text() ? ToolTipText(text()) : QString());
    // A name runs in its own direction, whatever the window's.
    const auto flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())) |
                       (text().isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight);
    style()->drawItemText(&painter, room, flags, palette(), isEnabled(), lines.join(u'\n'), foregroundRole());
}

// As many as there is room for, the last one cut where there is more.
QStringList PbaElidedLabel::BrokenLines(const QRect &room) const
{
    const int most = qMax(1, room.height() / fontMetrics().lineSpacing());
    QTextLayout layout(text(), font());
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(room.width());
        if (lines.size() == most - 1) {
            lines += fontMetrics().elidedText(text().mid(line.textStart()), Qt::ElideRight, room.width());
            break;
        }
        lines += text().mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}
