#include "widgets/pba_elided_label.h"

#include <QPainter>
#include <QStyle>

namespace {

constexpr int kAlwaysShown = 120;

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
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    setToolTip(shown == text() ? QString() : text());
    style()->drawItemText(&painter, contentsRect(),
                          static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())),
                          palette(), isEnabled(), shown, foregroundRole());
}
