// SPDX-License-Identifier: Apache-2.0
// Discards what a person did while the windows stood still. It lies with the window system or the kernel and
// comes when the event loop turns: from the call until all of that is through, keys and buttons that go down
// have no effect, nor has what follows from them until they go up again. What was down before may go up.
#pragma once

#include <cstdint>
#include <set>

#include <QAbstractNativeEventFilter>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QObject>
#include <QTimer>

namespace pbe {

class TypeAhead : public QObject, public QAbstractNativeEventFilter
{
public:
    TypeAhead();

    void Discard();
    // Asked once for each key event of a window, before anybody acts on it.
    bool Takes(const QKeyEvent &event);

    bool nativeEventFilter(const QByteArray &kind, void *message, qintptr *result) override;

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void CountPasses();
    void OnPass();
    bool TakesPress(const QKeyEvent &event);
    bool TakesRelease(const QKeyEvent &event);
    bool TakesButton(const QMouseEvent &event);
    bool TakesTouch(QEvent::Type type);

    bool m_discarding = false;
    // That went down unnoticed and have not come up yet.
    std::set<std::uint32_t> m_keys;
    Qt::MouseButtons m_buttons;
    bool m_touched = false;
    // Turns of the event loop that are left, once the window system has sent everything.
    int m_passes = 0;
    QTimer m_pass;
    QTimer m_patience;
    std::uint32_t m_marker = 0;
};

} // namespace pbe
