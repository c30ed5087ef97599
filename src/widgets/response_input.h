// The lines into which a person types the administrator's response.
#pragma once

#include <QWidget>

class ResponseInput : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
};
