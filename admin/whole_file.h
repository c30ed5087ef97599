// SPDX-License-Identifier: Apache-2.0
// Files that are read in one piece.
#pragma once

#include <string>

namespace admin {

// Throws Failure, also for a file of more than 4 MiB: no file that a person names is that large.
std::string ReadWholeFile(const std::string &path);

} // namespace admin
