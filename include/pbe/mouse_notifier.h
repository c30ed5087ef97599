// SPDX-License-Identifier: Apache-2.0
// Pointing devices: how many there are, and word of every change (see events.h).
#pragma once

#include "pbe/export.h"

class PBE_EXPORT QPbeMouseNotifier
{
public:
    // Mice, touch pads, touch screens and the like that are connected now. Without a window system that
    // knows its devices (offscreen) it is 0. GUI thread only.
    static int GetMousecount();
};
