// SPDX-License-Identifier: Apache-2.0
// What a person can type by a layout.
#pragma once

#include <string_view>

#include "platform/layouts/keymap.h"

namespace layouts {

// With Shift, AltGr, Caps Lock and dead keys, without the keypad, which many keyboards lack. What the layout
// can type is found out once and kept; of the text nothing is.
bool CanType(const Keymap &keymap, std::u16string_view text);

} // namespace layouts
