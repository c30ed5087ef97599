// SPDX-License-Identifier: Apache-2.0
// Hot keys as an administrator writes them: modifiers and one key, joined by "+". docs/settings-format.md
// lists the names.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "settings_format/settings_record.h"

namespace admin {

// Nothing when `text` is not a hot key. "none" is the hot key with key 0.
std::optional<pba::Hotkey> ParseHotkey(std::string_view text);

// Bits of the modifiers that mean nothing are left out.
std::string FormatHotkey(const pba::Hotkey &hotkey);

} // namespace admin
