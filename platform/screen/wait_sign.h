// SPDX-License-Identifier: Apache-2.0
// What moves while the windows stand still: a ring of dots that turns, low in the middle of the window in
// front. It is a part of that window, since to show one of its own would have the toolkit deliver events.
#pragma once

#include <QWidget>

namespace pbe {

class WaitSign : public QWidget
{
public:
    WaitSign();
    // Nothing of it is left on the display.
    ~WaitSign() override;
    WaitSign(const WaitSign &) = delete;
    WaitSign &operator=(const WaitSign &) = delete;

    // Paints the next picture, on the display when this returns. Does nothing while there is no window to be
    // seen on.
    void Turn();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool FindPlace();

    int m_step = 0;
};

} // namespace pbe
