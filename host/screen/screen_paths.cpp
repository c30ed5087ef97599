// SPDX-License-Identifier: Apache-2.0
#include "host/screen/confinement.h"

namespace host {
namespace {

// The toolkit, what it loads, and what libinput and udev read. No program lies here that could be executed:
// that is never allowed.
constexpr const char *kReadable[] = {
    "/lib",
    "/lib64",
    "/usr/lib",
    "/usr/lib64",
    "/usr/local/lib",
    "/etc/fonts",
    "/etc/ld.so.cache",
    "/etc/localtime",
    "/usr/share/X11",
    "/usr/share/fontconfig",
    "/usr/share/fonts",
    "/usr/local/share/fonts",
    "/usr/share/icons",
    "/usr/share/libinput",
    "/usr/share/qt6",
    "/usr/share/zoneinfo",
    "/etc/libinput",
    "/sys",
    "/run/udev",
    "/dev/urandom",
    "/proc/meminfo",
    "/var/cache/fontconfig",
};

// libinput opens devices to read and write, or not at all.
constexpr const char *kWritable[] = {"/dev/fb0", "/dev/input", "/dev/null"};

} // namespace

Confinement ForScreen(const std::string &root, const std::string &programs, bool displayServer)
{
    Confinement confinement;
    confinement.readable.assign(std::begin(kReadable), std::end(kReadable));
    confinement.readable.push_back(root + "/pba");
    confinement.readable.push_back(programs);
    confinement.writable.assign(std::begin(kWritable), std::end(kWritable));
    confinement.displayServer = displayServer;
    return confinement;
}

} // namespace host
