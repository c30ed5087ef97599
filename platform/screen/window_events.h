// SPDX-License-Identifier: Apache-2.0
// Word of devices for the windows.
#pragma once

#include <initializer_list>

namespace pbe {

// Posts an event of a type of pbe/events.h to every visible window, menus and tool tips left out. It takes
// the place of those of the types `replaced` that wait there still.
void PostToWindows(int type, std::initializer_list<int> replaced = {});

} // namespace pbe
