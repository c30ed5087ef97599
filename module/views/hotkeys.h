// SPDX-License-Identifier: Apache-2.0
// Hot keys in the toolkit's terms: what the settings' hot keys become, and whether a key event is one.
#pragma once

#include <cstdint>

#include <Qt>

#include "settings_format/settings_record.h"

namespace pba {

struct ToolkitHotkey
{
    // Qt::Key_unknown: no hot key.
    std::uint32_t key = Qt::Key_unknown;
    // Qt::KeyboardModifiers: Shift, Control, Alt, Meta.
    std::uint32_t modifiers = 0;

    bool IsSet() const { return key != Qt::Key_unknown; }
    bool operator==(const ToolkitHotkey &) const = default;
};

// A hot key that jumps to one layout of one language, both by their place in the settings.
struct LayoutHotkey
{
    ToolkitHotkey hotkey;
    std::int32_t language = 0;
    std::int32_t layout = 0;
};

ToolkitHotkey ConvertHotkey(const Hotkey &hotkey);

// Whether pressing `key` (Qt::Key) while `modifiers` are held is the hot key. Of two modifier keys either may
// be the last one pressed.
bool MatchesHotkey(const ToolkitHotkey &hotkey, std::uint32_t key, std::uint32_t modifiers);

} // namespace pba
