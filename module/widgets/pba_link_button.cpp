// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/pba_link_button.h"

#include <QKeyEvent>

void PbaLinkButton::mousePressEvent(QMouseEvent *event)
{
    SetUnderlined(false);
    QPushButton::mousePressEvent(event);
}

void PbaLinkButton::enterEvent(QEnterEvent *event)
{
    if (isEnabled())
        SetUnderlined(true);
    QPushButton::enterEvent(event);
}

void PbaLinkButton::leaveEvent(QEvent *event)
{
    SetUnderlined(false);
    QPushButton::leaveEvent(event);
}

void PbaLinkButton::showEvent(QShowEvent *event)
{
    SetUnderlined(underMouse() && isEnabled());
    QPushButton::showEvent(event);
}

void PbaLinkButton::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        SetUnderlined(false);
    QPushButton::changeEvent(event);
}

// A link is never the dialog's automatic default, so Return would press the page's default button instead.
void PbaLinkButton::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::InsertParagraphSeparator))
        click();
    else
        QPushButton::keyPressEvent(event);
}

void PbaLinkButton::SetUnderlined(bool underlined)
{
    const QString sheet = underlined ? u"*{text-decoration: underline;}"_qs : QString();
    // Setting a sheet, even the same one, restyles the button.
    if (sheet != styleSheet())
        setStyleSheet(sheet);
}
