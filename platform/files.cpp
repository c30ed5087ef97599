// SPDX-License-Identifier: Apache-2.0
// The view's files below the root directory. Only regular files are opened, and without waiting: a fifo or a
// device in their place must not hang the start of the computer.
//
// Links are followed when reading and on the way to a file, since a root may be put together from links. The
// last component of a file to be written is not followed: a planted link would let the view empty any file.
#include "pbe/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QList>
#include <QString>

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

bool IsProperPath(QStringView path)
{
    if (!path.startsWith(u'\\') || path.contains(u'/') || !path.isValidUtf16())
        return false;
    const auto components = path.split(u'\\');
    return std::none_of(components.begin(), components.end(),
                        [](QStringView component) { return component == u".."; });
}

kro::result_t Resolve(const char16_t *path, std::string *file)
{
    try {
        if (!path || !IsProperPath(path))
            return kro::kInvalidArgument;
        *file = Root() + QString::fromUtf16(path).replace(u'\\', u'/').toStdString();
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

kro::result_t Open(const char16_t *path, int flags, bool empty, int *descriptor)
{
    if (!descriptor)
        return kro::kInvalidArgument;
    *descriptor = -1;
    std::string file;
    const kro::result_t result = Resolve(path, &file);
    if (kro::Failed(result))
        return result;
    const int opened = open(file.c_str(), flags | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, S_IRUSR | S_IWUSR);
    if (opened < 0)
        return ResultOf(errno);
    if (!Settle(opened, empty)) {
        close(opened);
        return kro::kAccessDenied;
    }
    *descriptor = opened;
    return kro::kOk;
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

bool PbeFileExists(const char16_t *path)
{
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
