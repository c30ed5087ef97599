// SPDX-License-Identifier: Apache-2.0
// The system calls that a process can make.
#pragma once

#include <string>

#include "host/screen/confinement.h"

namespace host {

// All threads of this process make the calls that drawing and hearing keys need, or asking at a terminal, and
// no others: those fail as if they were not permitted, so that a library that tries one goes on without. No
// process can be started, no program executed.
[[nodiscard]] bool RestrictSystemCalls(const Confinement &confinement, std::string *fault);

// For code of others that needs much: all but what serves to get at other processes, programs and the kernel.
// Those calls fail as if they were not permitted.
[[nodiscard]] bool ForbidTampering(std::string *fault);

} // namespace host
