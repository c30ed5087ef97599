// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/write_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace volume {
namespace {

constexpr std::chrono::milliseconds kPause{100};

// Not every kernel refuses to open a write-protected device for writing.
bool IsWriteProtected(int file)
{
    struct stat status;
    int readOnly = 0;
    return fstat(file, &status) == 0 && S_ISBLK(status.st_mode) && ioctl(file, BLKROGET, &readOnly) == 0 &&
           readOnly;
}

// Of another kind than the locks that libcryptsetup takes on the same file, and would wait for.
bool TryLockFile(int file)
{
    struct flock whole = {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return fcntl(file, F_OFD_SETLK, &whole) == 0;
}

} // namespace

Error OpenForWriting(const std::string &path, int *file)
{
    *file = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    if (*file < 0)
        return errno == EACCES || errno == EPERM || errno == EROFS ? Error::ReadOnly
                                                                   : FromErrno(-errno, path);
    if (!IsWriteProtected(*file))
        return Error::None;
    close(*file);
    *file = -1;
    return Error::ReadOnly;
}

Error WriteLock::Take(const std::string &path, std::chrono::milliseconds patience)
{
    if (const Error error = OpenForWriting(path, &m_file); error != Error::None)
        return error;
    return Wait(TryLockFile, patience);
}

Error WriteLock::TakeDirectory(const std::string &path, std::chrono::milliseconds patience)
{
    m_file = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_file < 0)
        return FromErrno(-errno, path);
    return Wait([](int file) { return flock(file, LOCK_EX | LOCK_NB) == 0; }, patience);
}

template <typename TryLock>
Error WriteLock::Wait(TryLock tryLock, std::chrono::milliseconds patience) const
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!tryLock(m_file)) {
        if (errno != EAGAIN && errno != EACCES && errno != EINTR)
            return Error::Failed;
        if (std::chrono::steady_clock::now() >= end)
            return Error::Busy;
        std::this_thread::sleep_for(kPause);
    }
    return Error::None;
}

int WriteLock::Flush() const
{
    return fsync(m_file) == 0 ? 0 : -errno;
}

WriteLock::~WriteLock()
{
    if (m_file >= 0)
        close(m_file);
}

} // namespace volume
