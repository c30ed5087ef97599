// SPDX-License-Identifier: Apache-2.0
// A part of a page that scrolls when it is higher than the room that there is, and is as high as its content
// otherwise. What has the focus in it is always in sight.
#pragma once

#include <QScrollArea>

class PbaScrollArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit PbaScrollArea(QWidget *parent = nullptr);
    ~PbaScrollArea() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void ShowFocus(QWidget *before, QWidget *focus);
};
