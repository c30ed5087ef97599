// SPDX-License-Identifier: Apache-2.0
// Holds back all painting while the screen has to stay as it is, and makes up for it afterwards.
#pragma once

#include <vector>

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace pbe {

class RepaintGate : public QObject
{
public:
    void Close();
    // Paints every window at once.
    void Open();
    bool IsClosed() const { return m_closed; }

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void Hold(QWidget *window);
    bool Keep(QObject *receiver);

    bool m_closed = false;
    // Windows whose updates were turned off here, not by the application.
    std::vector<QPointer<QWidget>> m_held;
    // Receivers that wait for an update request that was kept from them.
    std::vector<QPointer<QObject>> m_owed;
};

} // namespace pbe
