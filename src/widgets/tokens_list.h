// The list of connected tokens on the login page for tokens.
#pragma once

#include <QWidget>

class TokensList : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
};
