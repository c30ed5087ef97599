// SPDX-License-Identifier: Apache-2.0
// Which keys are held and which locks are on.
//
// Under X11 and Wayland each key event says which locks the server had on before it. On a framebuffer nobody
// says so, and what the keys do is followed here.
#pragma once

#include <cstdint>
#include <map>

#include <QKeyEvent>

#include "platform/layouts/keymap.h"

namespace pbe {

// How a key is read. What holds at its press holds until its release: neither a change of the layout changes
// a key that is held, nor do its repetitions change with the modifiers, which some window systems leave out
// there.
struct HeldKey
{
    const layouts::Keymap *keymap = nullptr;
    layouts::Modifiers levels;
    Qt::KeyboardModifiers modifiers;
    Qt::Key key = Qt::Key_unknown;
};

class KeyStates
{
public:
    // Takes note of the locks. For every press and release, before it is read.
    void Note(const QKeyEvent &event);

    void Press(std::uint32_t scanCode, const HeldKey &held) { m_held[scanCode] = held; }
    void Release(std::uint32_t scanCode) { m_held.erase(scanCode); }
    // Null when its press was not seen.
    const HeldKey *Held(std::uint32_t scanCode) const;
    // For the time in which somebody else got the keys.
    void ReleaseAll() { m_held.clear(); }

    bool IsCapsLockOn() const { return m_capsLock; }
    bool IsNumLockOn() const { return m_numLock; }
    void SetNumLock(bool on) { m_numLock = on; }

    // What chooses among the characters of a key.
    layouts::Modifiers Levels(const QKeyEvent &event) const;
    // What else is held with it: Alt and Control as the layout has them, whatever the window system makes of
    // the right ones.
    Qt::KeyboardModifiers Modifiers(const QKeyEvent &event, const layouts::Keymap &keymap) const;

private:
    bool IsHeld(xkb_keysym_t modifier, const QKeyEvent &event) const;

    std::map<std::uint32_t, HeldKey> m_held;
    bool m_capsLock = false;
    bool m_numLock = false;
};

} // namespace pbe
