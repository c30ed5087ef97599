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

// Waits until `descriptor` can be read or its other end is closed, for a host that has asked another process
// and may not go on before the answer. Windows stand still meanwhile, but for the sign below: no input, no
// timer, no notification reaches anything, and nothing runs nested. What is typed and clicked during the wait
// is discarded when the events are next processed, while keys that go up, modifiers and locks are taken note
// of. A request to stop is kept for the event loop. False, at once, for a descriptor that is not open or
// cannot be waited for. GUI thread only, but also before there is an application; it does not nest.
PBE_EXPORT bool PbeAwait(int descriptor);

// Whether a wait that lasts is seen by a sign of its own that moves, over the window in front. Not by itself.
PBE_EXPORT void PbeShowWaitSign(bool show);

// Calls `callback` with `context` on the GUI thread whenever `descriptor` can be read or its other end is
// closed, in whichever event loop runs, and again until that has been read; but not from within itself. A
// null `callback` ends it, to be done before the descriptor is closed; another one takes its place; both also
// within the callback. One that is set while there is no application waits for the next one, and it goes on
// with each after that. GUI thread only. The callback throws nothing.
PBE_EXPORT void PbeWatch(int descriptor, void (*callback)(void *context), void *context);

// Tells the windows that tokens have come or gone (pbe/events.h), for a host that watches them itself. What
// was told before and has not arrived is dropped. Without a running application nothing happens. GUI thread
// only.
PBE_EXPORT void PbeTellTokens(bool added);

// Ends the event loops of the running application, or of the next one, with a code: Run gives everything back
// and answers kUnspecifiedError. Safe in a signal handler.
PBE_EXPORT void PbeRequestStop();

} // extern "C"
