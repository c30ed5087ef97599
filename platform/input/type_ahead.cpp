// SPDX-License-Identifier: Apache-2.0
#include "platform/input/type_ahead.h"

#include <chrono>
#include <utility>

#include <QGuiApplication>

#include "platform/screen/x11.h"

namespace pbe {

namespace {

using namespace std::chrono_literals;

// In the first turn the toolkit reads what waits at the devices, in the second it delivers it.
constexpr int kPasses = 3;
// A server that does not send the marker back must not lock anybody out.
constexpr auto kPatience = 1s;

} // namespace

TypeAhead::TypeAhead()
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatience);
    QObject::connect(&m_patience, &QTimer::timeout, this, [this] { CountPasses(); });
    QObject::connect(&m_pass, &QTimer::timeout, this, [this] { OnPass(); });
}

void TypeAhead::Discard()
{
    m_discarding = true;
    m_pass.stop();
    qGuiApp->installEventFilter(this);
    m_marker = x11::SendMarker();
    if (m_marker == 0) {
        CountPasses();
        return;
    }
    qGuiApp->installNativeEventFilter(this);
    m_patience.start();
}

bool TypeAhead::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    if (!x11::IsMarker(message, m_marker))
        return false;
    CountPasses();
    return true;
}

void TypeAhead::CountPasses()
{
    m_patience.stop();
    qGuiApp->removeNativeEventFilter(this);
    m_passes = kPasses;
    m_pass.start(0ms);
}

void TypeAhead::OnPass()
{
    if (--m_passes > 0)
        return;
    m_pass.stop();
    m_discarding = false;
}

bool TypeAhead::Takes(const QKeyEvent &event)
{
    if (event.type() == QEvent::KeyRelease)
        return TakesRelease(event);
    return TakesPress(event);
}

bool TypeAhead::TakesPress(const QKeyEvent &event)
{
    const std::uint32_t key = event.nativeScanCode();
    if (event.isAutoRepeat())
        return m_discarding || m_keys.count(key) > 0;
    // Without a scan code all keys are one.
    if (m_discarding && event.type() == QEvent::KeyPress && key != 0)
        m_keys.insert(key);
    else if (!m_discarding)
        m_keys.erase(key);
    return m_discarding;
}

bool TypeAhead::TakesRelease(const QKeyEvent &event)
{
    if (event.isAutoRepeat())
        return m_discarding || m_keys.count(event.nativeScanCode()) > 0;
    return m_keys.erase(event.nativeScanCode()) > 0;
}

// Each at the window, which gets it first and would give it to a widget.
bool TypeAhead::eventFilter(QObject *receiver, QEvent *event)
{
    if (!receiver->isWindowType())
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        return TakesButton(*static_cast<QMouseEvent *>(event));
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        return TakesTouch(event->type());
    case QEvent::Wheel:
        return m_discarding;
    default:
        return false;
    }
}

bool TypeAhead::TakesButton(const QMouseEvent &event)
{
    const bool wasTaken = m_buttons.testFlag(event.button());
    const bool isPress = event.type() != QEvent::MouseButtonRelease;
    m_buttons.setFlag(event.button(), isPress && m_discarding);
    return isPress ? m_discarding : wasTaken;
}

bool TypeAhead::TakesTouch(QEvent::Type type)
{
    if (type == QEvent::TouchBegin)
        m_touched = m_discarding;
    return type == QEvent::TouchEnd ? std::exchange(m_touched, false) : m_touched;
}

} // namespace pbe
