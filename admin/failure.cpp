// SPDX-License-Identifier: Apache-2.0
#include "admin/failure.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "base/durable_name.h"

namespace admin {

Failure FileFailure(const std::string &path, const char *what, int error)
{
    const std::filesystem::path directory = base::DirectoryOf(path);
    std::error_code unknown;
    const bool noDirectory = error == ENOENT && !std::filesystem::exists(directory, unknown);
    return Failure(path + ": " + what + ": " +
                   (noDirectory ? "there is no directory " + directory.string() + "; make it first"
                                : std::strerror(error)));
}

} // namespace admin
