// SPDX-License-Identifier: Apache-2.0
#include "admin/mapped_file.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

#include "admin/failure.h"

namespace admin {
namespace {

constexpr std::int64_t kMaxBytes = std::int64_t{4} * 1024 * 1024 * 1024;
constexpr char kCannotBeRead[] = "cannot be read";

} // namespace

// Opening does not wait for the other end of a fifo.
MappedFile::MappedFile(const std::string &path)
    : m_file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
{
    if (m_file < 0)
        throw FileFailure(path, kCannotBeRead, errno);
    try {
        Map(path);
    } catch (...) {
        close(m_file);
        throw;
    }
}

MappedFile::~MappedFile()
{
    munmap(m_bytes, m_size);
    close(m_file);
}

void MappedFile::Map(const std::string &path)
{
    if (flock(m_file, LOCK_SH) != 0 || fstat(m_file, &m_status) != 0)
        throw FileFailure(path, kCannotBeRead, errno);
    if (!S_ISREG(m_status.st_mode))
        throw Failure(path + ": is no file; move it out of the way or name another");
    if (m_status.st_size > kMaxBytes)
        throw Failure(path + ": larger than 4 GiB; move it out of the way or name another");
    m_size = static_cast<std::size_t>(m_status.st_size);
    if (m_size == 0)
        return;
    m_bytes = mmap(nullptr, m_size, PROT_READ, MAP_PRIVATE, m_file, 0);
    if (m_bytes == MAP_FAILED)
        throw FileFailure(path, kCannotBeRead, errno);
}

} // namespace admin
