// SPDX-License-Identifier: Apache-2.0
// Which hot keys are allowed, without a word to the log: the administrator's tool asks the same questions
// before it writes the settings as the view asks after it has read them.
#pragma once

#include <bit>
#include <cstdint>

#include "settings_format/settings_record.h"

namespace fde::boot {

// Shift, Ctrl, Alt and Win, each as one key and as left and right.
inline bool IsModifierKey(std::uint16_t key)
{
    return (key >= 0x10 && key <= 0x12) || key == 0x5B || key == 0x5C || (key >= 0xA0 && key <= 0xA5);
}

// A modifier key is recognised with at most one further modifier, an ordinary key with any.
inline bool IsHotkeyAccepted(const pba::Hotkey &hotkey)
{
    constexpr unsigned kKnown =
        pba::kModifierAlt | pba::kModifierCtrl | pba::kModifierShift | pba::kModifierWin;
    return !IsModifierKey(hotkey.key) || std::popcount(hotkey.modifiers & kKnown) < 2;
}

} // namespace fde::boot
