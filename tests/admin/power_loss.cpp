// Preloaded into a program: ends it without a farewell at the write or sync number PBA_POWER_LOSS_AT, as a
// loss of power would. Only calls on the file PBA_POWER_LOSS_FILE count. The write at which it happens gets
// half of its bytes to the disk.
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <unistd.h>

namespace {

bool IsTheFile(int file)
{
    std::error_code error;
    const char *path = std::getenv("PBA_POWER_LOSS_FILE");
    return path && std::filesystem::equivalent(path, "/proc/self/fd/" + std::to_string(file), error);
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

} // extern "C"
