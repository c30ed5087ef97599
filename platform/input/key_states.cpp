// SPDX-License-Identifier: Apache-2.0
#include "platform/input/key_states.h"

#include <algorithm>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <QGuiApplication>

namespace pbe {

namespace {

constexpr std::uint32_t kCapsLock = 66;
constexpr std::uint32_t kNumLock = 77;

// The right one of these may choose levels instead.
struct Pair
{
    std::uint32_t left;
    std::uint32_t right;
    Qt::KeyboardModifier modifier;
};
constexpr Pair kPairs[] = {{64, 108, Qt::AltModifier}, {37, 105, Qt::ControlModifier}};

// Of the server's modifiers.
constexpr std::uint32_t kLockBit = 1U << 1;
constexpr std::uint32_t kNumLockBit = 1U << 4;

bool ServerKnowsLocks()
{
    const QString platform = QGuiApplication::platformName();
    return platform == u"xcb" || platform.startsWith(u"wayland");
}

void Follow(bool &lock, const QKeyEvent &event, std::uint32_t key, std::uint32_t bit)
{
    const bool isOwnKey = event.nativeScanCode() == key;
    // The event of the key itself tells of the time before it.
    if (ServerKnowsLocks() && (!isOwnKey || event.type() == QEvent::KeyPress))
        lock = event.nativeModifiers() & bit;
    if (isOwnKey && event.type() == QEvent::KeyPress && !event.isAutoRepeat())
        lock = !lock;
}

} // namespace

void KeyStates::Note(const QKeyEvent &event)
{
    Follow(m_capsLock, event, kCapsLock, kLockBit);
    Follow(m_numLock, event, kNumLock, kNumLockBit);
}

const HeldKey *KeyStates::Held(std::uint32_t scanCode) const
{
    const auto held = m_held.find(scanCode);
    return held != m_held.end() ? &held->second : nullptr;
}

bool KeyStates::IsHeld(xkb_keysym_t modifier, const QKeyEvent &event) const
{
    return std::any_of(m_held.begin(), m_held.end(), [&](const auto &held) {
        return held.first != event.nativeScanCode() && held.second.keymap &&
               held.second.keymap->BaseSymbol(held.first) == modifier;
    });
}

layouts::Modifiers KeyStates::Levels(const QKeyEvent &event) const
{
    return {.shift = event.QInputEvent::modifiers().testFlag(Qt::ShiftModifier),
            .level3 = IsHeld(XKB_KEY_ISO_Level3_Shift, event),
            .level5 = IsHeld(XKB_KEY_ISO_Level5_Shift, event),
            .capsLock = m_capsLock,
            .numLock = m_numLock};
}

Qt::KeyboardModifiers KeyStates::Modifiers(const QKeyEvent &event, const layouts::Keymap &keymap) const
{
    // Past QKeyEvent's own function, which turns a modifier key's own flag round.
    Qt::KeyboardModifiers modifiers = event.QInputEvent::modifiers() & ~Qt::GroupSwitchModifier;
    for (const Pair &pair : kPairs) {
        if (!Held(pair.right) || event.nativeScanCode() == pair.right)
            continue;
        const xkb_keysym_t right = keymap.BaseSymbol(pair.right);
        const bool choosesLevels = right == XKB_KEY_ISO_Level3_Shift || right == XKB_KEY_ISO_Level5_Shift;
        modifiers.setFlag(pair.modifier, !choosesLevels || Held(pair.left));
    }
    return modifiers;
}

} // namespace pbe
