// SPDX-License-Identifier: Apache-2.0
// What a host may ask of the platform while the view runs. Free of Qt.
#pragma once

#include "kro/result.h"
#include "kro/string.h"
#include "pbe/export.h"

extern "C" {

// Whether there is the display that the view would be shown on; to be asked before the view runs, for the
// toolkit ends the process where there is none. kOk, kNotFound or kAccessDenied, and then what is wrong and
// what to do about it in `*fault`: one line, UTF-8.
PBE_EXPORT kro::result_t PbeCheckDisplay(kro::string_t *fault);

// Shows the wait cursor, in the dialog and over it, and repaints at once, so that it is on the display while
// the host is busy; false takes it back. Calls nest. Nothing else is processed: no input, no timers. Without
// a running application nothing happens. GUI thread only.
PBE_EXPORT void PbeSetBusy(bool busy);

// Ends the event loops of the running application, or of the next one, with a code: Run gives everything back
// and answers kUnspecifiedError. Safe in a signal handler.
PBE_EXPORT void PbeRequestStop();

} // extern "C"
