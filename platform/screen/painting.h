// SPDX-License-Identifier: Apache-2.0
// Painting without a turn of the event loop, which would process input and timers.
#pragma once

namespace pbe {

// Everything that the application has to show is on the display when this returns.
void PaintWindowsNow();
// What is to be painted anew, and nothing else.
void PaintPendingNow();

} // namespace pbe
