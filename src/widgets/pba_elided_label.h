// A label for one line of text of any length: what does not fit is cut, and a tool tip tells the whole. It so
// never widens the window. The first part of the text, up to a modest width, is always shown.
#pragma once

#include <QLabel>

class PbaElidedLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
