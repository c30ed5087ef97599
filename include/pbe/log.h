// SPDX-License-Identifier: Apache-2.0
// The platform's log. Free of Qt; every function may be called from any thread.
#pragma once

#include <cstdint>

#include "kro/result.h"
#include "pbe/export.h"

extern "C" {

// Writes one line. `text` ends in CR LF and a zero; `tag` is eight characters wide. The line reaches the sink
// whole, in one write: the tag, and right behind it the text as it stands. Lines above the severity are
// dropped. `kind` is 5 for a line of a named severity (a multiple of 100 from 100 to 1000) and 0 for any
// other; the log keeps nothing of it.
PBE_EXPORT void PbeLogMessage(std::uint32_t severity, std::uint32_t kind, const char *tag, const char *text);

// The highest severity that is logged: 300 errors, 700 calls, 900 details. Texts that a person types may be
// logged from 800 on, and the screens warn of it.
PBE_EXPORT std::uint32_t PbeGetLogSeverity();

// Choice of the host, to be made before the view module is loaded, or its version record is lost. A host that
// says nothing leaves the choice to the environment: PBE_LOG (a path, default standard error) and
// PBE_LOG_SEVERITY (default 300).
PBE_EXPORT void PbeSetLogSeverity(std::uint32_t severity);
// Appends to the file, creating it readable by its owner only. kAccessDenied, and the sink stays as it was,
// when it cannot be opened. Only regular files and character devices will do.
PBE_EXPORT kro::result_t PbeSetLogFile(const char *path);
// Goes on at a descriptor, for a host that was given its log open: standard error (2), which is left as it
// is, or what is open for writing and would do by its path; that belongs to the log afterwards, which
// appends to it and never waits for it. When it is refused the sink stays as it was and the descriptor the
// caller's: kInvalidArgument for one that is not open, else kAccessDenied.
PBE_EXPORT kro::result_t PbeSetLogDescriptor(int descriptor);
// What the log writes to, to be handed to a program that the host starts. It stays the log's.
PBE_EXPORT int PbeGetLogDescriptor();

} // extern "C"
