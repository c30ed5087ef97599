// SPDX-License-Identifier: Apache-2.0
// The keyboard layouts of this computer, from the view's settings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "settings_format/settings_record.h"

namespace host {

// Of all languages, in their order; none when there are no settings that can be read.
std::vector<pba::KeyboardLayout> ConfiguredLayouts();

// As the view's selector shows it, else as the platform knows it; empty for a layout that nobody knows.
std::u16string LayoutName(std::uint32_t layoutId);

// The names of the configured ones by which the text cannot be typed, as a list for people; may be empty.
std::u16string LayoutsThatCannotType(std::u16string_view text);

} // namespace host
