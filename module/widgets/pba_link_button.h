// SPDX-License-Identifier: Apache-2.0
// A flat push button that looks like a link: underlined while the pointer is over it, until it is pressed
// or disabled.
// It carries the underline in a style sheet of its own, since a hover rule would bring it back after a click.
#pragma once

#include <QPushButton>

class PbaLinkButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void SetUnderlined(bool underlined);
};
