// SPDX-License-Identifier: Apache-2.0
#include "base/write_all.h"

#include <cerrno>

#include <unistd.h>

namespace base {

bool WriteAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written == 0 || (written < 0 && errno != EINTR))
            return false;
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

} // namespace base
