// SPDX-License-Identifier: Apache-2.0
#include "host/screen/confinement.h"

namespace host {
namespace {

// Libraries. No program lies here that could be executed: that is never allowed.
constexpr const char *kForAll[] = {
    "/lib", "/lib64", "/usr/lib", "/usr/lib64", "/usr/local/lib", "/etc/ld.so.cache", "/etc/localtime",
};

// What the toolkit loads, and what libinput and udev read.
constexpr const char *kReadable[] = {
    "/etc/fonts",
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
    confinement.readable.assign(std::begin(kForAll), std::end(kForAll));
    confinement.readable.insert(confinement.readable.end(), std::begin(kReadable), std::end(kReadable));
    confinement.readable.push_back(root + "/pba");
    confinement.readable.push_back(programs);
    confinement.writable.assign(std::begin(kWritable), std::end(kWritable));
    confinement.displayServer = displayServer;
    return confinement;
}

Confinement ForTerminal(const std::string &root)
{
    Confinement confinement;
    confinement.readable.assign(std::begin(kForAll), std::end(kForAll));
    confinement.readable.push_back(root + "/pba/l10n_text");
    confinement.terminal = true;
    return confinement;
}

} // namespace host
