// SPDX-License-Identifier: Apache-2.0
#include "tools/tour/shown_texts.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>

namespace {

QString TextOf(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->text();
    return widget->property("pba_text").toString();
}

QSize NeededSize(const QWidget *widget)
{
    if (widget->hasHeightForWidth())
        return {widget->minimumSizeHint().width(), widget->heightForWidth(widget->width())};
    if (!qobject_cast<const QLineEdit *>(widget))
        return widget->sizeHint();
    // A hint is written in italics, a little off either end.
    QFont font = widget->font();
    font.setItalic(true);
    return {QFontMetrics(font).horizontalAdvance(TextOf(widget)) + 10, 0};
}

bool IsClipped(const QWidget *widget)
{
    if (widget->inherits("PbaElidedLabel") || widget->inherits("PbaComboBox"))
        return false;
    const QSize needed = NeededSize(widget);
    if (widget->width() < needed.width() || widget->height() < needed.height())
        return true;
    for (const QWidget *around = widget->parentWidget(); around; around = around->parentWidget()) {
        const QRect place(widget->mapTo(around, QPoint(0, 0)), widget->size());
        // What is scrolled out of sight is within reach.
        if (qobject_cast<const QScrollArea *>(around->parentWidget()))
            return place.left() < 0 || place.right() >= around->width();
        if (!around->rect().contains(place))
            return true;
    }
    return false;
}

template <typename Report>
void ForEachText(const QWidget *window, Report report)
{
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        if (widget->isVisible() && !TextOf(widget).isEmpty())
            report(widget);
    }
}

} // namespace

QStringList ShownTexts(const QWidget *window)
{
    QStringList texts;
    ForEachText(window, [&](const QWidget *widget) { texts << TextOf(widget); });
    return texts;
}

QStringList ClippedTexts(const QWidget *window)
{
    QStringList clipped;
    ForEachText(window, [&](const QWidget *widget) {
        if (IsClipped(widget))
            clipped << widget->objectName() + QStringLiteral(": ") + TextOf(widget);
    });
    return clipped;
}
