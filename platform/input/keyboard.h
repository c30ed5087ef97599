// SPDX-License-Identifier: Apache-2.0
// Types by the layout that the screens have chosen.
//
// Every key event that comes from the window system carries the scan code of its key. Before a window gets
// it, it is made anew from that: the character by the layout in force, dead keys put together. Events without
// a scan code (from a remote viewer, from a program) have been read elsewhere and pass as they are.
#pragma once

#include <cstdint>
#include <optional>

#include <QKeyEvent>
#include <QObject>

#include "platform/input/key_states.h"
#include "platform/layouts/composer.h"
#include "platform/layouts/keymap.h"
#include "platform/input/lock_lights.h"
#include "platform/input/type_ahead.h"

namespace pbe {

// What an event of a key becomes.
struct Reading
{
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    xkb_keysym_t symbol;
    QString text;
};

class Keyboard : public QObject
{
public:
    explicit Keyboard(TypeAhead &typeAhead);

    // An unknown identifier leaves the layout in force and is logged.
    void SetLayout(const QString &identifier);
    // 0 before the first one.
    std::uint32_t Layout();

    bool IsCapsLockOn() const { return m_states.IsCapsLockOn(); }

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void Note(const QKeyEvent &event);
    void ShowLocks();
    void Follow(const QKeyEvent &event);
    void Translate(QObject *window, QKeyEvent *event);
    HeldKey HowToRead(const QKeyEvent &event) const;
    bool Compose(QObject *window, const QKeyEvent &event, Reading &reading);
    void SendText(QObject *window, const QKeyEvent &cause, const QString &text);
    bool Send(QObject *window, QEvent::Type type, const QKeyEvent &cause, const Reading &reading);

    void PutInForce();

    TypeAhead &m_typeAhead;
    KeyStates m_states;
    // Only where the window system leaves the lights alone.
    std::optional<LockLights> m_lights;
    // Not yet in force: its data is read when the first key or question needs it, for that takes as long as a
    // third of the first screen.
    const layouts::Layout *m_chosen = nullptr;
    const layouts::Keymap *m_keymap = nullptr;
    std::optional<layouts::Composer> m_composer;
    // The event that is being sent and not to be read again. One that comes meanwhile, from the loop of a
    // dialog that a key has opened, is.
    const QEvent *m_sent = nullptr;
};

} // namespace pbe
