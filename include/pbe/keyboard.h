// SPDX-License-Identifier: Apache-2.0
// Keyboard layouts, for hosts: what they are called, what they can type, which one is in force. A layout goes
// by its 32-bit identifier, for example 0x00000407 (German) or 0x00010409 (Dvorak). Free of Qt; GUI thread
// only.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kro/result.h"
#include "pbe/export.h"

extern "C" {

// The layout's English name, UTF-8, for example "German". It stays valid. Null for a layout that the platform
// does not know.
PBE_EXPORT const char *PbeGetKeyboardLayoutName(std::uint32_t layout);

// Stores whether a person can type `text` (UTF-16, `length` code units) by this layout, with Shift, AltGr,
// Caps Lock and dead keys. The empty text can always be typed. kNotFound for an unknown layout. Keeps no copy
// of the text.
PBE_EXPORT kro::result_t PbeCanTypeText(std::uint32_t layout, const char16_t *text, std::size_t length,
                                        bool *canType);

// The layout that the screens have put in force, 0 before the first one and without a running application.
PBE_EXPORT std::uint32_t PbeGetKeyboardLayout();

// Whether Caps Lock is on, as far as the last key that was pressed or released tells.
PBE_EXPORT bool PbeIsCapsLockOn();

} // extern "C"
