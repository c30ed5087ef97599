// SPDX-License-Identifier: Apache-2.0
// A label for a name of any length, on one line where it fits. Else it is broken, between words where it can
// be, over the lines that the label is high; what is still too long is cut, and a tool tip tells the whole.
// It so never widens the window.
#pragma once

#include <QLabel>

#include "module/widgets/shown_name.h"

class PbaElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit PbaElidedLabel(QWidget *parent = nullptr)
        : QLabel(parent)
    {
    }
    explicit PbaElidedLabel(const QString &text) { setText(text); }

    // What no screen can hold is not even kept.
    void setText(const QString &text) { QLabel::setText(ShownName(text)); }

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QStringList BrokenLines(const QRect &room) const;
};
