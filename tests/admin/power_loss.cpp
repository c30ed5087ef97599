// SPDX-License-Identifier: Apache-2.0
// Preloaded into a program: ends it without a farewell at the write or sync number PBA_POWER_LOSS_AT, as a
// loss of power would. Only calls on the file PBA_POWER_LOSS_FILE count, or on all in that directory, named
// or not. The write at which it happens gets half of its bytes to the disk. With PBA_POWER_LOSS_ERROR the call
// fails with that error instead, as a failing disk would have it; where PBA_POWER_LOSS_AT is "syncs", all syncs
// do. With PBA_ALL_FILES_NAMED the file system knows no others.
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace {

bool IsTheFile(int file)
{
    std::error_code error;
    const char *path = std::getenv("PBA_POWER_LOSS_FILE");
    const auto opened = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), error);
    return path && opened.string().starts_with(path);
}

bool IsTheMoment(int file, std::size_t size)
{
    static int count = 0;
    const char *at = std::getenv("PBA_POWER_LOSS_AT");
    if (!at || !IsTheFile(file))
        return false;
    return std::strcmp(at, "syncs") == 0 ? size == 0 : ++count == std::atoi(at);
}

template <typename Function>
Function *Next(Function *, const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

template <typename Call>
auto Pass(int file, std::size_t size, Call call)
{
    if (!IsTheMoment(file, size))
        return call(size);
    auto result = call(size / 2);
    const char *error = std::getenv("PBA_POWER_LOSS_ERROR");
    if (!error)
        _exit(86);
    errno = std::atoi(error);
    return result = -1;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) ssize_t write(int file, const void *bytes, size_t size)
{
    return Pass(file, size, [&](size_t part) { return Next(write, "write")(file, bytes, part); });
}

__attribute__((visibility("default"))) int fsync(int file)
{
    return Pass(file, 0, [&](size_t) { return Next(fsync, "fsync")(file); });
}

__attribute__((visibility("default"))) int fdatasync(int file)
{
    return Pass(file, 0, [&](size_t) { return Next(fdatasync, "fdatasync")(file); });
}

__attribute__((visibility("default"))) int open(const char *path, int flags, ...)
{
    if ((flags & O_TMPFILE) == O_TMPFILE && std::getenv("PBA_ALL_FILES_NAMED")) {
        errno = EOPNOTSUPP;
        return -1;
    }
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return Next(open, "open")(path, flags, mode);
}

} // extern "C"
