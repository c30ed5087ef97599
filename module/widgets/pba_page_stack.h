// The stack of pages. It asks no page how large it would like to be: a long text on some page never widens
// the window, and pages that are not shown are neither styled nor measured, which would delay the first
// screen. The pages stand in one column of reading width in the middle of the stack.
#pragma once

#include <QStackedWidget>

class PbaPageStack : public QStackedWidget
{
    Q_OBJECT

public:
    using QStackedWidget::QStackedWidget;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return false; }

protected:
    void resizeEvent(QResizeEvent *event) override;
};
