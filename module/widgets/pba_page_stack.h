// SPDX-License-Identifier: Apache-2.0
// The stack of pages. It asks no page how large it would like to be: a long text on some page never widens
// the window, and pages that are not shown are neither styled nor measured, which would delay the first
// screen. The pages stand in one column of reading width in the middle of the stack.
#pragma once

#include <QSet>
#include <QStackedWidget>

class PbaPageStack : public QStackedWidget
{
    Q_OBJECT

public:
    explicit PbaPageStack(QWidget *parent = nullptr);

    // Makes a page the current one. Its first time is also when it is styled.
    void ShowPage(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return false; }
    bool eventFilter(QObject *receiver, QEvent *event) override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    bool IsUnstyled(const QWidget *widget) const;
    void StylePage(QWidget *page);

    QSet<const QWidget *> m_styled;
};
