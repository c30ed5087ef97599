// SPDX-License-Identifier: Apache-2.0
// What a person should know about the keyboard whose password was refused.
#pragma once

#include <string>

#include "host/screen/texts.h"

namespace host {

// A paragraph to put behind a message, with the break before it: the layout in force, and Caps Lock when it
// is on. Empty when there is nothing to say.
std::u16string KeyboardHints(const Texts &texts);

} // namespace host
