// SPDX-License-Identifier: Apache-2.0
// What settings.bin holds: the computer's name, the input languages and the hot keys. Shared with the
// administrator's tool, hence free of the toolkit.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pba {

// Bits of Hotkey::modifiers; others mean nothing.
inline constexpr std::uint16_t kModifierAlt = 0x0001;
inline constexpr std::uint16_t kModifierCtrl = 0x0002;
inline constexpr std::uint16_t kModifierShift = 0x0004;
inline constexpr std::uint16_t kModifierWin = 0x0008;

struct Hotkey
{
    std::uint16_t modifiers = 0;
    // A virtual-key code; 0 is no hot key.
    std::uint16_t key = 0;

    bool operator==(const Hotkey &) const = default;
};

struct KeyboardLayout
{
    // An 8-digit layout identifier, such as 0x00000409.
    std::uint32_t layoutId = 0;
    std::u16string name;
    Hotkey selectHotkey;

    bool operator==(const KeyboardLayout &) const = default;
};

struct InputLanguage
{
    std::uint16_t languageId = 0;
    std::u16string name;
    std::vector<KeyboardLayout> layouts;

    bool operator==(const InputLanguage &) const = default;
};

struct PrebootSettings
{
    std::vector<InputLanguage> inputLanguages;
    Hotkey languageSwitchHotkey;
    Hotkey keyboardLayoutSwitchHotkey;
    Hotkey capsLockTurnOffHotkey;

    bool operator==(const PrebootSettings &) const = default;
};

struct ConstantSettingsRecord
{
    std::u16string hostName;
    PrebootSettings prebootSettings;

    bool operator==(const ConstantSettingsRecord &) const = default;
};

} // namespace pba
