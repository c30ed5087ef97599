// SPDX-License-Identifier: Apache-2.0
#include "host/screen/display_cookie.h"

#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {
namespace {

constexpr off_t kMaxBytes = 64 * 1024;

std::string CookieFile()
{
    if (const char *path = std::getenv("XAUTHORITY"))
        return path;
    const char *home = std::getenv("HOME");
    return home ? std::string(home) + "/.Xauthority" : "";
}

} // namespace

void KeepDisplayCookie()
{
    const int file = open(CookieFile().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status
    {
    };
    const int copy = file >= 0 ? memfd_create("display cookie", MFD_CLOEXEC) : -1;
    if (copy >= 0 && fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= kMaxBytes &&
        sendfile(copy, file, nullptr, static_cast<std::size_t>(status.st_size)) == status.st_size)
        setenv("XAUTHORITY", ("/proc/self/fd/" + std::to_string(copy)).c_str(), 1);
    if (file >= 0)
        close(file);
}

} // namespace host
