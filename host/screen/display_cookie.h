// SPDX-License-Identifier: Apache-2.0
// The cookie that opens an X display lies in a file of whoever started the program, which the screen cannot
// reach any more once it is confined.
#pragma once

namespace host {

// Reads it while it can be read, into memory of this process, and points XAUTHORITY there. Without a file
// nothing changes: the display may ask for none.
void KeepDisplayCookie();

} // namespace host
