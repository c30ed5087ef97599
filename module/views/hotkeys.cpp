// SPDX-License-Identifier: Apache-2.0
#include "module/views/hotkeys.h"

#include <string_view>
#include <utility>

#include "module/views/virtual_keys.h"

namespace pba {

namespace {

constexpr std::uint32_t kShift = Qt::ShiftModifier;
constexpr std::uint32_t kControl = Qt::ControlModifier;
constexpr std::uint32_t kAlt = Qt::AltModifier;
constexpr std::uint32_t kMeta = Qt::MetaModifier;

// In the order in which the key of a combined modifier is looked for.
constexpr std::pair<std::uint32_t, std::uint32_t> kModifierKeys[] = {{Qt::Key_Shift, kShift},
                                                                     {Qt::Key_Control, kControl},
                                                                     {Qt::Key_Meta, kMeta},
                                                                     {Qt::Key_Alt, kAlt},
                                                                     {Qt::Key_AltGr, kAlt}};

// 0 for a key that is no modifier.
std::uint32_t FlagOfKey(std::uint32_t key)
{
    for (const auto &[modifierKey, flag] : kModifierKeys) {
        if (modifierKey == key)
            return flag;
    }
    return 0;
}

// Qt::Key_unknown when no modifier is named.
std::uint32_t KeyOfModifiers(std::uint32_t modifiers)
{
    for (const auto &[key, flag] : kModifierKeys) {
        if (modifiers & flag)
            return key;
    }
    return Qt::Key_unknown;
}

// The key that arrived as what it types with Shift. The two keys of Return are one.
std::uint32_t UnshiftedKey(std::uint32_t key, std::uint32_t modifiers)
{
    constexpr std::string_view kTyped = "!@#$%^&*()_+{}|:\"<>?~";
    constexpr std::string_view kKeys = "1234567890-=[]\\;',./`";
    static_assert(kTyped.size() == kKeys.size());
    if (key == Qt::Key_Return)
        return Qt::Key_Enter;
    if (key == Qt::Key_Backtab)
        return Qt::Key_Tab;
    if ((modifiers & kShift) == 0 || key >= 0x80)
        return key;
    const std::size_t place = kTyped.find(static_cast<char>(key));
    return place == std::string_view::npos ? key : static_cast<std::uint32_t>(kKeys[place]);
}

} // namespace

ToolkitHotkey ConvertHotkey(const Hotkey &hotkey)
{
    std::uint32_t modifiers = 0;
    for (const auto &[bit, flag] : {std::pair(kModifierAlt, kAlt), std::pair(kModifierCtrl, kControl),
                                    std::pair(kModifierShift, kShift), std::pair(kModifierWin, kMeta)}) {
        if (hotkey.modifiers & bit)
            modifiers |= flag;
    }
    return {ToolkitKey(hotkey.key), modifiers};
}

bool MatchesHotkey(const ToolkitHotkey &hotkey, std::uint32_t key, std::uint32_t modifiers)
{
    if (!hotkey.IsSet())
        return false;
    // Where the key stands, on the number pad or not, makes no difference.
    const std::uint32_t held = modifiers & (kShift | kControl | kAlt | kMeta);
    const std::uint32_t ownFlag = FlagOfKey(hotkey.key);
    if ((held & ~ownFlag) == hotkey.modifiers && (key == hotkey.key || UnshiftedKey(key, held) == hotkey.key))
        return true;
    const std::uint32_t otherKey = KeyOfModifiers(hotkey.modifiers);
    if (ownFlag == 0 || otherKey == Qt::Key_unknown)
        return false;
    return (held & ~FlagOfKey(otherKey)) == ownFlag && key == otherKey;
}

} // namespace pba
