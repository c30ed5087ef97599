// SPDX-License-Identifier: Apache-2.0
// The view's files below the root directory. Only regular files are opened, and without waiting: a fifo or a
// device in their place must not hang the start of the computer.
//
// Links are followed when reading and on the way to a file, since a root may be put together from links. The
// last component of a file to be written is not followed: a planted link would let the view empty any file.
// A file that the host has handed over was checked by whoever opened it.
#include "pbe/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/utf.h"

namespace {

// Absolute and without a slash at its end, so that "" stands for "/".
std::string RootOf(const char *directory)
{
    if (!directory || !*directory)
        return {};
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(directory, error);
    std::string root = error ? std::string(directory) : absolute.string();
    while (!root.empty() && root.back() == '/')
        root.pop_back();
    return root;
}

std::string &Root()
{
    static std::string s_root = RootOf(std::getenv("PBE_ROOT"));
    return s_root;
}

// The files that are open already.
std::map<std::u16string, int, std::less<>> &UsedFiles()
{
    static std::map<std::u16string, int, std::less<>> s_files;
    return s_files;
}

bool HasParentComponent(std::string_view name)
{
    for (std::size_t begin = 0; begin < name.size();) {
        const std::size_t end = std::min(name.find('/', begin), name.size());
        if (name.substr(begin, end - begin) == "..")
            return true;
        begin = end + 1;
    }
    return false;
}

// The name below the root; empty for a path that is not proper.
std::string NameOf(std::u16string_view path)
{
    std::string name = base::ToUtf8(path);
    // Half a surrogate pair does not come back.
    if (!path.starts_with(u'\\') || path.find(u'/') != path.npos || base::ToUtf16(name) != path)
        return {};
    std::replace(name.begin(), name.end(), '\\', '/');
    return HasParentComponent(name) ? std::string() : name;
}

kro::result_t Resolve(const char16_t *path, std::string *file)
{
    try {
        const std::string name = path ? NameOf(path) : std::string();
        if (name.empty())
            return kro::kInvalidArgument;
        *file = Root() + name;
    } catch (const std::bad_alloc &) {
        return kro::kOutOfMemory;
    }
    return kro::kOk;
}

kro::result_t ResultOf(int error)
{
    return error == ENOENT || error == ENOTDIR ? kro::kNotFound : kro::kAccessDenied;
}

// Refuses what is no regular file; what is one behaves like any descriptor from then on.
bool Settle(int descriptor, bool empty)
{
    struct stat status
    {
    };
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    const int flags = fcntl(descriptor, F_GETFL);
    if (flags < 0 || fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK) != 0)
        return false;
    // Not O_TRUNC when opening: what is no regular file has to stay as it is.
    return !empty || ftruncate(descriptor, 0) == 0;
}

// Whether a descriptor serves for reading (O_RDONLY) or for writing (O_WRONLY).
bool IsOpenFor(int mode, int descriptor)
{
    const int flags = fcntl(descriptor, F_GETFL);
    const int opened = flags & O_ACCMODE;
    return flags >= 0 && (flags & O_PATH) == 0 && (opened == mode || opened == O_RDWR);
}

bool IsNotYetWritten(int descriptor)
{
    struct stat status
    {
    };
    return fstat(descriptor, &status) == 0 && status.st_size == 0 && status.st_mtime == kPbeNotYetWritten;
}

// -1 with the reason in errno.
int OpenUsed(int used, int mode)
{
    if (mode == O_RDONLY && IsNotYetWritten(used)) {
        errno = ENOENT;
        return -1;
    }
    if (!IsOpenFor(mode, used)) {
        errno = EACCES;
        return -1;
    }
    const int opened = fcntl(used, F_DUPFD_CLOEXEC, 0);
    if (opened >= 0)
        lseek(opened, 0, SEEK_SET);
    return opened;
}

int OpenAny(const char16_t *path, const char *file, int flags)
{
    const auto used = UsedFiles().find(std::u16string_view(path));
    if (used != UsedFiles().end())
        return OpenUsed(used->second, flags & O_ACCMODE);
    return open(file, flags | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, S_IRUSR | S_IWUSR);
}

kro::result_t Open(const char16_t *path, int flags, bool empty, int *descriptor)
{
    if (!descriptor)
        return kro::kInvalidArgument;
    *descriptor = -1;
    std::string file;
    const kro::result_t result = Resolve(path, &file);
    if (kro::Failed(result))
        return result;
    const int opened = OpenAny(path, file.c_str(), flags);
    if (opened < 0)
        return ResultOf(errno);
    if (!Settle(opened, empty)) {
        close(opened);
        return kro::kAccessDenied;
    }
    *descriptor = opened;
    return kro::kOk;
}

// Takes the place of what stood for the path before.
void Keep(const char16_t *path, int descriptor)
{
    int &kept = UsedFiles().try_emplace(path, descriptor).first->second;
    if (kept != descriptor)
        close(std::exchange(kept, descriptor));
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

} // namespace

void PbeSetFileRoot(const char *directory)
{
    if (directory && *directory)
        Root() = RootOf(directory);
}

kro::result_t PbeGetFilePath(const char16_t *path, kro::string_t *file)
{
    std::string resolved;
    const kro::result_t result = file ? Resolve(path, &resolved) : kro::kInvalidArgument;
    if (kro::Failed(result))
        return result;
    try {
        file->Assign(resolved);
    } catch (const std::bad_alloc &) {
        return kro::kOutOfMemory;
    }
    return kro::kOk;
}

kro::result_t PbeUseFile(const char16_t *path, int descriptor)
{
    std::string file;
    const kro::result_t result = Resolve(path, &file);
    if (kro::Failed(result))
        return result;
    struct stat status
    {
    };
    if (descriptor < 0 || fstat(descriptor, &status) != 0)
        return kro::kInvalidArgument;
    const auto &files = UsedFiles();
    if (std::any_of(files.begin(), files.end(),
                    [&](const auto &used) { return used.second == descriptor && used.first != path; }))
        return kro::kInvalidArgument;
    if (!S_ISREG(status.st_mode))
        return kro::kAccessDenied;
    try {
        Keep(path, descriptor);
    } catch (const std::bad_alloc &) {
        return kro::kOutOfMemory;
    }
    return kro::kOk;
}

bool PbeFileExists(const char16_t *path)
{
    const auto used = path ? UsedFiles().find(path) : UsedFiles().end();
    if (used != UsedFiles().end())
        return !IsNotYetWritten(used->second);
    std::string file;
    struct stat status
    {
    };
    return !kro::Failed(Resolve(path, &file)) && lstat(file.c_str(), &status) == 0;
}

kro::result_t PbeOpenFileForReading(const char16_t *path, int *descriptor)
{
    return Open(path, O_RDONLY, false, descriptor);
}

kro::result_t PbeOpenFileForWriting(const char16_t *path, int *descriptor)
{
    return Open(path, O_WRONLY | O_CREAT | O_NOFOLLOW, true, descriptor);
}
