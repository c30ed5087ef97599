// SPDX-License-Identifier: Apache-2.0
// The toolkit's key codes for symbols of the keyboard.
#pragma once

#include <cstdint>

#include <Qt>

namespace pbe {

// What the symbol of a key is to the toolkit: modifiers, dead keys, the keypad's arrows and the like, and
// every character in its upper case. Key_unknown for any other.
Qt::Key KeyOfSymbol(std::uint32_t symbol);

// What lies on the key of a keyboard of the United States; Key_unknown outside the block of letters and
// digits.
Qt::Key KeyOfPlace(std::uint32_t scanCode);

bool IsModifier(Qt::Key key);
bool IsKeypad(std::uint32_t scanCode);

} // namespace pbe
