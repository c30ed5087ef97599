// SPDX-License-Identifier: Apache-2.0
#include "platform/input/keyboard.h"

#include <utility>

#include <QGuiApplication>
#include <QPointer>
#include <QScopedValueRollback>

#include "platform/input/key_names.h"
#include "platform/own_log.h"

namespace pbe {

namespace {

constexpr Qt::KeyboardModifiers kCommand = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

bool IsLatinLetter(Qt::Key key)
{
    return key >= Qt::Key_A && key <= Qt::Key_Z;
}

// Commands such as Ctrl+A go by the layout's Latin letters; where it has none, and for the digits, by the
// place, so that Ctrl+1 is on every keyboard.
Qt::Key KeyOfCommand(std::uint32_t scanCode, const layouts::Keymap &keymap)
{
    const Qt::Key letter = KeyOfSymbol(keymap.BaseSymbol(scanCode));
    const Qt::Key place = KeyOfPlace(scanCode);
    return IsLatinLetter(letter) || place == Qt::Key_unknown ? letter : place;
}

Reading ReadCharacter(const QKeyEvent &event, const HeldKey &how)
{
    const quint32 scanCode = event.nativeScanCode();
    const layouts::Keymap &keymap = *how.keymap;
    Reading reading{Qt::Key_unknown, how.modifiers, keymap.Symbol(scanCode, how.levels), {}};
    reading.modifiers.setFlag(Qt::KeypadModifier, IsKeypad(scanCode));
    reading.key = reading.modifiers & kCommand ? KeyOfCommand(scanCode, keymap) : KeyOfSymbol(reading.symbol);
    if (!reading.modifiers.testFlag(Qt::ControlModifier))
        reading.text = QString::fromStdU16String(keymap.Text(scanCode, how.levels));
    else if (IsLatinLetter(reading.key))
        reading.text = QChar(reading.key - Qt::Key_A + 1);
    return reading;
}

Reading Read(const QKeyEvent &event, const HeldKey &how)
{
    const quint32 scanCode = event.nativeScanCode();
    if (how.keymap->IsCharacterKey(scanCode))
        return ReadCharacter(event, how);
    const xkb_keysym_t symbol = how.keymap->BaseSymbol(scanCode);
    const Qt::Key key = KeyOfSymbol(symbol);
    // With Shift some servers call Alt another key.
    if (IsModifier(key))
        return {key, how.modifiers, symbol, {}};
    // The window system's own layout may have a character where this one has none.
    const bool isCharacter = !event.text().isEmpty() && event.text().at(0).isPrint();
    return {static_cast<Qt::Key>(event.key()), how.modifiers, symbol, isCharacter ? QString() : event.text()};
}

const layouts::Layout *FindLayout(const QString &identifier)
{
    bool isNumber = false;
    const uint id = identifier.toUInt(&isNumber, 16);
    return isNumber ? layouts::Find(id) : nullptr;
}

} // namespace

Keyboard::Keyboard(TypeAhead &typeAhead)
    : m_typeAhead(typeAhead)
{
    qApp->installEventFilter(this);
    if (QGuiApplication::platformName() == u"linuxfb") {
        m_lights.emplace();
        m_states.SetNumLock(m_lights->StartsWithNumLock());
        ShowLocks();
    }
    connect(qGuiApp, &QGuiApplication::focusObjectChanged, this, [this] {
        if (m_composer)
            m_composer->Reset();
    });
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive)
            m_states.ReleaseAll();
    });
}

void Keyboard::SetLayout(const QString &identifier)
{
    const layouts::Layout *layout = FindLayout(identifier);
    if (!layout) {
        LogOwn(kErrors, "unknown keyboard layout: " + identifier.toStdString());
        return;
    }
    // Again each time: the filter that is installed last sees an event first.
    qApp->installEventFilter(this);
    m_chosen = layout;
}

std::uint32_t Keyboard::Layout()
{
    PutInForce();
    return m_keymap ? m_keymap->ItsLayout().id : 0;
}

void Keyboard::PutInForce()
{
    const layouts::Layout *layout = std::exchange(m_chosen, nullptr);
    if (!layout)
        return;
    const layouts::Keymap *keymap = layouts::Keymap::Of(*layout);
    if (!keymap) {
        LogOwn(kErrors, std::string("no data for the keyboard layout ") + layout->name);
        return;
    }
    m_keymap = keymap;
    if (!m_composer)
        m_composer.emplace();
    if (!m_composer->HasTable())
        LogOwn(kErrors, "dead keys type nothing: there is no table of compositions");
    m_composer->SetLayout(*layout);
    LogOwn(kInformation, std::string("keyboard layout: ") + layout->name);
}

bool Keyboard::eventFilter(QObject *receiver, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::KeyPress && type != QEvent::KeyRelease && type != QEvent::ShortcutOverride)
        return false;
    auto *keyEvent = static_cast<QKeyEvent *>(event);
    if (event == m_sent || !receiver->isWindowType())
        return false;
    if (m_typeAhead.Takes(*keyEvent)) {
        Follow(*keyEvent);
        event->accept();
        return true;
    }
    if (keyEvent->nativeScanCode() == 0)
        return false;
    Note(*keyEvent);
    if (!m_keymap)
        return false;
    Translate(receiver, keyEvent);
    return true;
}

// For every event of a key with a scan code, before it is read.
void Keyboard::Note(const QKeyEvent &event)
{
    if (event.type() != QEvent::ShortcutOverride) {
        m_states.Note(event);
        ShowLocks();
    }
    PutInForce();
}

// A key that has no effect may choose among the characters of another, or be a lock.
void Keyboard::Follow(const QKeyEvent &event)
{
    if (event.nativeScanCode() == 0)
        return;
    Note(event);
    if (!m_keymap || event.isAutoRepeat())
        return;
    if (event.type() == QEvent::KeyPress)
        m_states.Press(event.nativeScanCode(), HowToRead(event));
    else if (event.type() == QEvent::KeyRelease)
        m_states.Release(event.nativeScanCode());
}

void Keyboard::ShowLocks()
{
    if (m_lights)
        m_lights->Show(m_states.IsCapsLockOn(), m_states.IsNumLockOn());
}

void Keyboard::Translate(QObject *window, QKeyEvent *event)
{
    const quint32 scanCode = event->nativeScanCode();
    HeldKey how = HowToRead(*event);
    Reading reading = Read(*event, how);
    if (event->type() == QEvent::KeyRelease && how.key != Qt::Key_unknown)
        reading.key = how.key;
    if (event->type() == QEvent::KeyPress && !event->isAutoRepeat()) {
        how.key = reading.key;
        m_states.Press(scanCode, how);
        if (!Compose(window, *event, reading))
            return;
    }
    if (event->type() == QEvent::KeyRelease && !event->isAutoRepeat())
        m_states.Release(scanCode);
    event->setAccepted(Send(window, event->type(), *event, reading));
}

HeldKey Keyboard::HowToRead(const QKeyEvent &event) const
{
    const HeldKey *held = m_states.Held(event.nativeScanCode());
    if (held && event.isAutoRepeat())
        return *held;
    HeldKey how{m_keymap, m_states.Levels(event), {}, Qt::Key_unknown};
    if (held && event.type() == QEvent::KeyRelease) {
        how.keymap = held->keymap;
        how.key = held->key;
    }
    how.modifiers = m_states.Modifiers(event, *how.keymap);
    return how;
}

// False for a press that is used up: one that takes a dead key back.
bool Keyboard::Compose(QObject *window, const QKeyEvent &event, Reading &reading)
{
    if (reading.modifiers & kCommand)
        return true;
    if (m_composer->IsWaiting() && reading.key == Qt::Key_Backspace) {
        m_composer->Reset();
        return false;
    }
    const layouts::Composer::Result result = m_composer->Feed(reading.symbol);
    if (!result.before.empty()) {
        const QPointer<QObject> living(window);
        SendText(window, event, QString::fromStdU16String(result.before));
        if (!living)
            return false;
    }
    if (result.step != layouts::Composer::Result::Plain)
        reading.text = QString::fromStdU16String(result.text);
    return true;
}

// As a key of its own, before the one that it has to do with.
void Keyboard::SendText(QObject *window, const QKeyEvent &cause, const QString &text)
{
    const auto key = static_cast<Qt::Key>(text.at(0).unicode());
    Send(window, QEvent::KeyPress, cause, {key, Qt::NoModifier, XKB_KEY_NoSymbol, text});
    Send(window, QEvent::KeyRelease, cause, {key, Qt::NoModifier, XKB_KEY_NoSymbol, text});
}

// Whether somebody has accepted it.
bool Keyboard::Send(QObject *window, QEvent::Type type, const QKeyEvent &cause, const Reading &reading)
{
    QKeyEvent event(type, reading.key, reading.modifiers, cause.nativeScanCode(), reading.symbol,
                    cause.nativeModifiers(), reading.text, cause.isAutoRepeat(),
                    static_cast<quint16>(cause.count()));
    event.setTimestamp(cause.timestamp());
    event.setAccepted(cause.isAccepted());
    const QScopedValueRollback sent(m_sent, static_cast<const QEvent *>(&event));
    QCoreApplication::sendEvent(window, &event);
    return event.isAccepted();
}

} // namespace pbe
