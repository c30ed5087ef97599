// SPDX-License-Identifier: Apache-2.0
#include "module/views/entropy_dialog.h"

#include <utility>

#include <QCoreApplication>
#include <QKeyEvent>

#include "pbe/counter.h"

namespace pba {

namespace {

// Without a key for so long, the next one is meant.
constexpr qint64 kPauseMs = 500;

// In the first one timers may come before the input that has been read.
constexpr int kTurnsToRead = 2;

constexpr Qt::ApplicationAttribute kCompressMoves = Qt::AA_CompressHighFrequencyEvents;

} // namespace

QDialogWithEntropyCollection::QDialogWithEntropyCollection()
{
    QCoreApplication::instance()->installEventFilter(this);
}

void QDialogWithEntropyCollection::SetCollectingEntropy(bool collecting)
{
    if (collecting == std::exchange(m_collecting, collecting))
        return;
    if (collecting) {
        m_compressMoves = QCoreApplication::testAttribute(kCompressMoves);
        m_dropStrayKeys = false;
        m_sinceKey.invalidate();
    }
    QCoreApplication::setAttribute(kCompressMoves, !collecting && m_compressMoves);
}

bool QDialogWithEntropyCollection::IsCollectingEntropy() const
{
    return m_collecting;
}

void QDialogWithEntropyCollection::FinishCollectingEntropy()
{
    SetCollectingEntropy(false);
    m_dropStrayKeys = m_sinceKey.isValid();
    DropWaitingInput();
}

void QDialogWithEntropyCollection::DropWaitingInput()
{
    m_turnsLeft = kTurnsToRead;
    m_waitingInput.start(0, this);
}

void QDialogWithEntropyCollection::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_waitingInput.timerId())
        QDialog::timerEvent(event);
    else if (--m_turnsLeft == 0)
        m_waitingInput.stop();
}

bool QDialogWithEntropyCollection::eventFilter(QObject *receiver, QEvent *event)
{
    if (IsStray(*event))
        return true;
    // The toolkit's window sees each move too, before its widget.
    if (m_collecting && event->type() == QEvent::MouseMove && receiver->isWidgetType())
        SampleMove(static_cast<QWidget *>(receiver), static_cast<const QMouseEvent &>(*event));
    return QDialog::eventFilter(receiver, event);
}

// A release alone does nothing, and a button that is down waits for it.
bool QDialogWithEntropyCollection::IsStray(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
        return IsStrayKey();
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return m_waitingInput.isActive();
    default:
        return false;
    }
}

bool QDialogWithEntropyCollection::IsStrayKey()
{
    const bool waited = m_waitingInput.isActive();
    if (m_collecting || waited)
        m_sinceKey.start();
    if (m_dropStrayKeys)
        m_dropStrayKeys = m_sinceKey.restart() < kPauseMs;
    return waited || m_dropStrayKeys;
}

void QDialogWithEntropyCollection::keyPressEvent(QKeyEvent *event)
{
    // Sampled behind the base's work: the last byte may bring a page whose default button Return would press.
    QDialog::keyPressEvent(event);
    SampleKey(*event);
}

void QDialogWithEntropyCollection::keyReleaseEvent(QKeyEvent *event)
{
    QDialog::keyReleaseEvent(event);
    SampleKey(*event);
}

void QDialogWithEntropyCollection::SampleKey(const QKeyEvent &event)
{
    if (!m_collecting)
        return;
    if (const auto byte = m_sampler.SampleKey(event.key(), PbeGetPerformanceCounterValue()))
        AddEntropy(*byte);
}

void QDialogWithEntropyCollection::SampleMove(QWidget *receiver, const QMouseEvent &event)
{
    if (IsSameMove(receiver, event))
        return;
    if (const auto byte = m_sampler.SampleMove(event.position().toPoint(), PbeGetPerformanceCounterValue()))
        AddEntropy(*byte);
}

// A move that a widget leaves alone comes again for its parent.
bool QDialogWithEntropyCollection::IsSameMove(QWidget *receiver, const QMouseEvent &event)
{
    const bool same = m_moveReceiver && receiver->isAncestorOf(m_moveReceiver) &&
                      event.timestamp() == m_moveTime && event.globalPosition() == m_movePosition;
    m_moveReceiver = receiver;
    m_moveTime = event.timestamp();
    m_movePosition = event.globalPosition();
    return same;
}

} // namespace pba
