// SPDX-License-Identifier: Apache-2.0
#include "module/forms/style.h"

#include <QDialog>
#include <QFile>
#include <QStyle>

namespace {

QString ReadStyleSheet()
{
    QFile file(u":/pba2_res/pba.qss"_qs);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

void ApplyPbaStyle(QDialog *dialog)
{
    static const QString sheet = ReadStyleSheet();
    dialog->setStyleSheet(sheet);
}

void Restyle(QWidget *widget)
{
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}
