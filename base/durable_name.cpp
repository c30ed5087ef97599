// SPDX-License-Identifier: Apache-2.0
#include "base/durable_name.h"

#include <fcntl.h>
#include <unistd.h>

namespace base {

std::filesystem::path DirectoryOf(const std::filesystem::path &file)
{
    return file.has_parent_path() ? file.parent_path() : ".";
}

// A name is on the disk when its directory is.
void MakeNameDurable(const std::filesystem::path &file)
{
    const int opened = open(DirectoryOf(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return;
    fsync(opened);
    close(opened);
}

} // namespace base
