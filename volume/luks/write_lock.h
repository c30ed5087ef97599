// SPDX-License-Identifier: Apache-2.0
// Keeps other programs of ours from changing a volume's header at the same time. libcryptsetup locks single
// writes only: two programs that each look for a free keyslot would write to the same place.
#pragma once

#include <chrono>
#include <string>

#include "volume/luks/error.h"

namespace volume {

// How long a change waits for another program to be done with its own.
inline constexpr std::chrono::milliseconds kLockPatience{5000};

class WriteLock
{
public:
    WriteLock() = default;
    // A program that ends in any way gives its lock back.
    ~WriteLock();
    WriteLock(const WriteLock &) = delete;
    WriteLock &operator=(const WriteLock &) = delete;

    // Busy when another program has it for longer. ReadOnly when the volume cannot be written.
    [[nodiscard]] Error Take(const std::string &path, std::chrono::milliseconds patience = kLockPatience);
    // For files that are replaced as a whole: the directory in which they stand.
    [[nodiscard]] Error TakeDirectory(const std::string &path, std::chrono::milliseconds patience);
    // Waits until all that was written to the volume since is on the disk, whoever wrote it. 0 or a negative
    // errno value.
    int Flush() const;

private:
    template <typename TryLock>
    Error Wait(TryLock tryLock, std::chrono::milliseconds patience) const;

    int m_file = -1;
};

// Whether the file or device at `path` can be opened for writing; `*file` is then open.
[[nodiscard]] Error OpenForWriting(const std::string &path, int *file);

} // namespace volume
