// SPDX-License-Identifier: Apache-2.0
#include "admin/appended_line.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "admin/failure.h"
#include "base/durable_name.h"
#include "base/write_all.h"

namespace admin {
namespace {

constexpr mode_t kReadableByOwner = 0600;

// False when another file has taken its place since it was opened.
bool IsStillAt(const std::string &path, int file, struct stat *status)
{
    struct stat there;
    return fstat(file, status) == 0 && stat(path.c_str(), &there) == 0 && there.st_dev == status->st_dev &&
           there.st_ino == status->st_ino;
}

} // namespace

AppendedLine::AppendedLine(const std::string &path, const std::string &line)
    : m_path(path)
{
    Open();
    try {
        char last = '\n';
        if (m_formerSize > 0 && pread(m_file, &last, 1, m_formerSize - 1) != 1)
            Fail();
        // A line without its end, left by a loss of power, does not swallow this one.
        Write((last == '\n' ? "" : "\n") + line + "\n");
        if (fsync(m_file) != 0)
            Fail();
        base::MakeNameDurable(m_path);
    } catch (...) {
        TakeBack();
        close(m_file);
        throw;
    }
}

AppendedLine::~AppendedLine()
{
    if (!m_kept)
        TakeBack();
    close(m_file);
}

// While the others wait: a file that nobody has written to is not left lying about.
void AppendedLine::TakeBack()
{
    if (m_made && m_formerSize == 0)
        unlink(m_path.c_str());
    else if (ftruncate(m_file, m_formerSize) == 0)
        fsync(m_file);
}

void AppendedLine::Open()
{
    struct stat status;
    do {
        if (m_file >= 0)
            close(m_file);
        m_made = lstat(m_path.c_str(), &status) != 0;
        m_file = open(m_path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK, kReadableByOwner);
        if (m_file < 0 || flock(m_file, LOCK_EX) != 0)
            Fail();
    } while (!IsStillAt(m_path, m_file, &status));
    if (!S_ISREG(status.st_mode))
        throw Failure(m_path + ": exists and is no file; name a file to write");
    m_formerSize = status.st_size;
}

void AppendedLine::Write(const std::string &bytes) const
{
    if (!base::WriteAll(m_file, bytes))
        Fail();
}

void AppendedLine::Fail() const
{
    throw FileFailure(m_path, "cannot be written", errno);
}

} // namespace admin
