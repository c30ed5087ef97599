// SPDX-License-Identifier: Apache-2.0
// A line edit that paints a hint while it is empty, also while it has the focus. The hint is the dynamic
// property "pba_text", read at every show, so that a new translation takes effect with the next one.
#pragma once

#include <QLineEdit>

class PbaLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    QString m_hint;
};
