#include "widgets/pba_line_edit.h"

#include <QPainter>

namespace {

constexpr int kHintMargin = 4;

} // namespace

void PbaLineEdit::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    if (!text().isEmpty() || m_hint.isEmpty())
        return;
    QPainter painter(this);
    QFont font = painter.font();
    font.setItalic(true);
    painter.setFont(font);
    painter.setPen(Qt::gray);
    painter.drawText(contentsRect().adjusted(kHintMargin, 0, -kHintMargin, 0),
                     Qt::AlignLeft | Qt::AlignVCenter, m_hint);
}

void PbaLineEdit::showEvent(QShowEvent *event)
{
    m_hint = property("pba_text").toString();
    // The hint is the field's only label, so it is also its name for a screen reader.
    setAccessibleName(m_hint);
    QLineEdit::showEvent(event);
}
