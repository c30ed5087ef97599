// SPDX-License-Identifier: Apache-2.0
#include "admin/whole_file.h"

#include <fstream>

#include "admin/failure.h"

namespace admin {
namespace {

constexpr std::size_t kMaxBytes = 4 * 1024 * 1024;

} // namespace

std::string ReadWholeFile(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text(kMaxBytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (!file.is_open() || file.bad())
        throw Failure(path + ": cannot be read; check the path");
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (text.size() > kMaxBytes)
        throw Failure(path + ": larger than 4 MiB; name another file");
    return text;
}

} // namespace admin
