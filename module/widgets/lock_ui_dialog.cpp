// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/lock_ui_dialog.h"

#include "module/forms/ui_lock_ui_dialog.h"
#include "module/widgets/dialog_frame.h"

LockUiDialog::LockUiDialog(QWidget *parent)
    : QDialog(parent)
    , m_form(std::make_unique<Ui::LockUiDialog>())
{
    m_form->setupUi(this);
    SetUpDialogFrame(this);
}

LockUiDialog::~LockUiDialog() = default;

void LockUiDialog::SetTitle(const QString &text)
{
    m_form->title->setText(text);
}

void LockUiDialog::SetText(const QString &text)
{
    m_form->mainText->setText(text);
}
