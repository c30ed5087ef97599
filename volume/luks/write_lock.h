// Keeps other programs of ours from changing a volume's header at the same time. libcryptsetup locks single
// writes only: two programs that each look for a free keyslot would write to the same place.
#pragma once

#include <string>

#include "volume/luks/error.h"

namespace volume {

class WriteLock
{
public:
    WriteLock() = default;
    // A program that ends in any way gives its lock back.
    ~WriteLock();
    WriteLock(const WriteLock &) = delete;
    WriteLock &operator=(const WriteLock &) = delete;

    // Waits some seconds for another program to be done. ReadOnly when the volume cannot be written.
    [[nodiscard]] Error Take(const std::string &path);

private:
    int m_file = -1;
};

// Whether the file or device at `path` can be opened for writing; `*file` is then open.
[[nodiscard]] Error OpenForWriting(const std::string &path, int *file);

} // namespace volume
