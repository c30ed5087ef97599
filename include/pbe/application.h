// What a host may ask of the platform while the view runs. Free of Qt.
#pragma once

#include "pbe/export.h"

extern "C" {

// Shows the wait cursor, in the dialog and over it, and repaints at once, so that it is on the display while
// the host is busy; false takes it back. Calls nest. Nothing else is processed: no input, no timers. Without
// a running application nothing happens. GUI thread only.
PBE_EXPORT void PbeSetBusy(bool busy);

// Ends the event loops of the running application, or of the next one, with a code: Run gives everything back
// and answers kUnspecifiedError. Safe in a signal handler.
PBE_EXPORT void PbeRequestStop();

} // extern "C"
