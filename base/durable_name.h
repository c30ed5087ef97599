// SPDX-License-Identifier: Apache-2.0
// Files whose name is new or has changed.
#pragma once

#include <filesystem>

namespace base {

// "." for a mere name.
std::filesystem::path DirectoryOf(const std::filesystem::path &file);

// Lets the name survive a loss of power. Not every file system can, and the file is complete either way, so
// nothing is reported.
void MakeNameDurable(const std::filesystem::path &file);

} // namespace base
