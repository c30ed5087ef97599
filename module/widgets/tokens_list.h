// SPDX-License-Identifier: Apache-2.0
// The list of connected tokens on the login page for tokens: for each its name, a field for the PIN and a
// button. It is built anew each time; a row's place is the token's place in the host's list.
#pragma once

#include <QWidget>

class QGridLayout;
class QLineEdit;
class QSignalMapper;

class TokensList : public QWidget
{
    Q_OBJECT

public:
    explicit TokensList(QWidget *parent = nullptr);

    void Clear();
    void AddToken(const QString &name, bool giveFocus);
    void FocusFirstToken();

signals:
    void PinEntered(int index, const QString &pin);
    void ForgotYourPinCodeButtonPressed();

public slots:
    void OnPinEntered(int index);
    void OnForgotYourPinCode();

private:
    QGridLayout *Grid() const;
    QLineEdit *PinField(int index) const;
    void AddName(int row, const QString &name, QLineEdit *pin);
    QLineEdit *AddPinField(int row);
    void AddContinueButton(int row);
    void AddRecoveryLink(int row);

    QSignalMapper *m_mapper;
    int m_tokenCount = 0;
};
