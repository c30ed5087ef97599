// SPDX-License-Identifier: Apache-2.0
// Lines that hold secrets, read without a copy left behind in a buffer.
#pragma once

#include "base/secret.h"

namespace admin {

enum class LineStatus {
    Complete,
    TooLong,
    Ended,       // nothing came before the end of the input
    Interrupted, // by a signal that did not end the program: ask again
};

// Reads up to the end of the line, which is not part of `*line`; a longer line is consumed whole.
LineStatus ReadSecretLine(int file, base::Secret *line);

// Asks at the terminal of this process, whatever its standard streams are, without echo. The terminal is as
// before when it returns, and when a signal ends the program. Throws Failure without a terminal.
LineStatus AskSecretLine(const char *prompt, base::Secret *line);

} // namespace admin
