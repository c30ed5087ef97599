// SPDX-License-Identifier: Apache-2.0
// A message that stands in front of everything and has no control that ends it.
#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class LockUiDialog;
}

class LockUiDialog : public QDialog
{
    Q_OBJECT

public:
    explicit LockUiDialog(QWidget *parent = nullptr);
    ~LockUiDialog() override;

    void SetTitle(const QString &text);
    void SetText(const QString &text);

private:
    const std::unique_ptr<Ui::LockUiDialog> m_form;
};
