// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/dialog_frame.h"

#include <QDialog>
#include <QGuiApplication>
#include <QScreen>

#include "module/forms/style.h"

void SetUpDialogFrame(QDialog *dialog)
{
    // Without the window flag a dialog that has a parent would become a part of it.
    dialog->setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::MSWindowsFixedSizeDialogHint);
    dialog->setFixedSize(dialog->size());
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    dialog->move(screen.center() - dialog->rect().center());
    ApplyPbaStyle(dialog);
}
