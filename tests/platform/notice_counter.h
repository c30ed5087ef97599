// A window that keeps what it is told of pointing devices.
#pragma once

#include <QEvent>
#include <QList>
#include <QWidget>

#include "pbe/events.h"

class NoticeCounter : public QWidget
{
public:
    QList<int> notices;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == pbe::kMouseAdded || event->type() == pbe::kMouseRemoved)
            notices.append(event->type());
        return QWidget::event(event);
    }
};
