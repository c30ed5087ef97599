// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/pba_line_edit.h"

#include <algorithm>

#include <QPainter>

namespace {

constexpr int kHintMargin = 4;

// In italics, unless they lack a character: the italics of some families know few scripts.
QFont HintFont(QFont font, const QString &hint)
{
    font.setItalic(true);
    const QFontMetrics italics(font);
    const QList<uint> characters = hint.toUcs4();
    font.setItalic(std::all_of(characters.begin(), characters.end(),
                               [&](uint character) { return italics.inFontUcs4(character); }));
    return font;
}

} // namespace

void PbaLineEdit::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    if (!text().isEmpty() || m_hint.isEmpty())
        return;
    QPainter painter(this);
    painter.setFont(HintFont(painter.font(), m_hint));
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
