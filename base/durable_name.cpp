#include "base/durable_name.h"

#include <fcntl.h>
#include <unistd.h>

namespace volume {

// A name is on the disk when its directory is.
void MakeNameDurable(const std::filesystem::path &file)
{
    const std::filesystem::path directory = file.has_parent_path() ? file.parent_path() : ".";
    const int opened = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return;
    fsync(opened);
    close(opened);
}

} // namespace volume
