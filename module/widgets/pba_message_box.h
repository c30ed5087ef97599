// SPDX-License-Identifier: Apache-2.0
// The module's one message and confirmation dialog: a title, a text, and what the caller adds of a severity
// icon, up to three buttons and the module's version. The caller runs it with exec and asks for its Result.
#pragma once

#include <QDialog>
#include <cstdint>
#include <memory>

namespace Ui {
class PbaMessageBox;
}
class QPushButton;

class PbaMessageBox : public QDialog
{
    Q_OBJECT

public:
    explicit PbaMessageBox(QWidget *parent = nullptr);
    ~PbaMessageBox() override;

    void SetTitle(const QString &text);
    void SetText(const QString &text);
    // 0 none, 1 warning, 2 error (with a red title); any other kind changes nothing.
    void SetSeverityIcon(int kind);
    void SetButton1Text(const QString &text);
    void SetButton2Text(const QString &text);
    // The third button also gets the focus.
    void SetButton3Text(const QString &text);
    void ShowVersion();

    // 1, 2 or 3 for the button that closed the box, 0 when it was closed in another way.
    std::int32_t Result() const { return m_result; }

public slots:
    void Button1Clicked();
    void Button2Clicked();
    void Button3Clicked();

private:
    void ShowIcon(const QString &file, bool error);
    void CloseWith(std::int32_t result);

    const std::unique_ptr<Ui::PbaMessageBox> m_form;
    std::int32_t m_result = 0;
};
