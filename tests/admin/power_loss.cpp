// Preloaded into a program: ends it without a farewell at the write or sync number PBA_POWER_LOSS_AT, as a
// loss of power would. Only calls on the file PBA_POWER_LOSS_FILE count, or on all in that directory, named
// or not. The write at which it happens gets half of its bytes to the disk. With PBA_ALL_FILES_NAMED the file
// system knows no others.
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
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

bool IsTheMoment(int file)
{
    static int count = 0;
    const char *at = std::getenv("PBA_POWER_LOSS_AT");
    return at && IsTheFile(file) && ++count == std::atoi(at);
}

template <typename Function>
Function *Next(Function *, const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

template <typename Call>
auto Pass(int file, std::size_t size, Call call)
{
    if (!IsTheMoment(file))
        return call(size);
    call(size / 2);
    _exit(86);
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
