// SPDX-License-Identifier: Apache-2.0
// The paths that a process can reach.
#pragma once

#include <string>

#include "host/screen/confinement.h"

namespace host {

// This thread and what it starts reach the readable and writable paths and no others; no program can be
// executed from any. Where the kernel can, no TCP and no signals to other processes either.
[[nodiscard]] bool RestrictPaths(const Confinement &confinement, std::string *fault);

} // namespace host
