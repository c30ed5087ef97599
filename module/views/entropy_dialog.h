// SPDX-License-Identifier: Apache-2.0
// The dialog base that gathers entropy while it is told to: from the keys that reach the dialog, and from the
// moves of the pointer over every widget of the application. One physical event counts once.
#pragma once

#include <cstdint>

#include <QBasicTimer>
#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>

#include "module/views/entropy_sampler.h"

namespace pba {

class QDialogWithEntropyCollection : public QDialog
{
    Q_OBJECT

public:
    QDialogWithEntropyCollection();

    void SetCollectingEntropy(bool collecting);
    bool IsCollectingEntropy() const;

    bool eventFilter(QObject *receiver, QEvent *event) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    // Takes a byte that was gathered.
    virtual void AddEntropy(std::uint8_t byte) = 0;

    // The last byte has come. Keys that are still being pressed at random are dropped until there is a pause,
    // lest they press what the next page shows.
    void FinishCollectingEntropy();
    // Of keys and clicks that came while nobody looked, for the host was at work, none is for what is shown
    // next.
    void DropWaitingInput();
    void timerEvent(QTimerEvent *event) override;

private:
    void SampleKey(const QKeyEvent &event);
    void SampleMove(QWidget *receiver, const QMouseEvent &event);
    bool IsSameMove(QWidget *receiver, const QMouseEvent &event);
    bool IsStray(const QEvent &event);
    bool IsStrayKey();

    bool m_collecting = false;
    // What the window system would do with moves otherwise.
    bool m_compressMoves = false;
    EntropySampler m_sampler;

    // The move seen last.
    QPointer<QWidget> m_moveReceiver;
    quint64 m_moveTime = 0;
    QPointF m_movePosition;

    QElapsedTimer m_sinceKey;
    bool m_dropStrayKeys = false;
    // Runs until what waits has been read: as many turns of the event loop are left.
    QBasicTimer m_waitingInput;
    int m_turnsLeft = 0;
};

} // namespace pba
