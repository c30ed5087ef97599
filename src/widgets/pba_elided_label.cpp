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
    const bool fits = sizeHint().width() <= width();
    setToolTip(fits ? QString() : text());
    const QString shown =
        fits ? text() : fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(),
                          static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())),
                          palette(), isEnabled(), shown, foregroundRole());
}
