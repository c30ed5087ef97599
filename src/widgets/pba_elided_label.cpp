#include "widgets/pba_elided_label.h"

#include <QPainter>
#include <QStyle>

namespace {

constexpr int kAlwaysShown = 150;

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
    const bool fits = sizeHint().width() <= width();
    const QString shown =
        fits ? text() : fontMetrics().elidedText(text(), Qt::ElideRight, WrappedWidth(room));
    setToolTip(shown == text() ? QString() : text());
    const auto flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    style()->drawItemText(&painter, room, fits ? flags : flags | Qt::TextWrapAnywhere, palette(), isEnabled(),
                          shown, foregroundRole());
}

// A wrapped line may stay empty at its end for as much as a wide character.
int PbaElidedLabel::WrappedWidth(const QRect &room) const
{
    const int lines = qMax(1, room.height() / fontMetrics().lineSpacing());
    return lines == 1 ? room.width() : lines * (room.width() - fontMetrics().horizontalAdvance(u'W'));
}
