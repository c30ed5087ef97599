// A label for a name of any length, on one line where it fits. Else it is broken, between words where it can
// be, over the lines that the label is high; what is still too long is cut, and a tool tip tells the whole.
// It so never widens the window.
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

private:
    QStringList BrokenLines(const QRect &room) const;
};
