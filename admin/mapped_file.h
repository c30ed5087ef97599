// SPDX-License-Identifier: Apache-2.0
// A file of a size that nobody chose, read without a copy. Other programs of ours wait with their writing
// until this object ends.
#pragma once

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace admin {

class MappedFile
{
public:
    // Throws Failure, also for what is no file and for one of more than 4 GiB: nothing that we write becomes
    // that large, and a sparse one would be read for hours.
    explicit MappedFile(const std::string &path);
    ~MappedFile();
    MappedFile(const MappedFile &) = delete;
    MappedFile &operator=(const MappedFile &) = delete;

    std::string_view View() const { return {static_cast<const char *>(m_bytes), m_size}; }
    const struct stat &Status() const { return m_status; }

private:
    void Map(const std::string &path);

    int m_file;
    struct stat m_status = {};
    void *m_bytes = nullptr;
    std::size_t m_size = 0;
};

// The line that begins at `offset`; the last one of a file may lack its end.
inline std::string_view LineAt(std::string_view text, std::size_t offset)
{
    return text.substr(offset, text.find('\n', offset) - offset);
}

} // namespace admin
