// Files whose name is new or has changed.
#pragma once

#include <filesystem>

namespace volume {

// Lets the name survive a loss of power. Not every file system can, and the file is complete either way, so
// nothing is reported.
void MakeNameDurable(const std::filesystem::path &file);

} // namespace volume
