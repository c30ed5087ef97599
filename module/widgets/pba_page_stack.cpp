#include "module/widgets/pba_page_stack.h"

namespace {

constexpr int kColumnWidth = 420;
// Wide enough to take all the room that a screen of 800 pixels has, from the gap beside the pages too.
constexpr int kPreferredWidth = 520;

} // namespace

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
