// SPDX-License-Identifier: Apache-2.0
#include "host/screen/confinement.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include "host/screen/identity.h"
#include "host/screen/landlock.h"
#include "host/screen/system_calls.h"

#ifdef PBA_SANITIZE
// The leak checker looks at a process by tracing it, which nobody may here. The name is the checker's.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" __attribute__((visibility("default"))) int __lsan_is_turned_off();
int __lsan_is_turned_off()
// NOLINTEND(bugprone-reserved-identifier)
{
    return 1;
}
#endif

namespace host {
namespace {

// Landlock binds the thread that asks for it and its later children: one that is there already would stay
// free.
bool HasOneThread()
{
    std::error_code error;
    const std::filesystem::directory_iterator threads("/proc/self/task", error);
    return !error && std::distance(begin(threads), end(threads)) == 1;
}

// An inherited descriptor has come through the start of the program, so it does not close there; what the
// program's libraries have opened for themselves does.
bool IsInherited(int descriptor)
{
    const int flags = fcntl(descriptor, F_GETFD);
    return flags >= 0 && (flags & FD_CLOEXEC) == 0;
}

bool CloseInheritedExcept(const std::vector<int> &kept)
{
    std::error_code error;
    std::vector<int> inherited;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
        const int descriptor = std::stoi(entry.path().filename());
        if (descriptor > STDERR_FILENO && IsInherited(descriptor))
            inherited.push_back(descriptor);
    }
    for (const int descriptor : inherited) {
        if (std::find(kept.begin(), kept.end(), descriptor) == kept.end())
            close(descriptor);
    }
    return !error;
}

// Empty when it has been taken.
std::string TakeUser(const std::string &text)
{
    if (text.empty())
        return geteuid() == 0 || getuid() == 0 ? "this may not run as root; name a user for it" : "";
    const std::optional<Identity> identity = FindIdentity(text);
    if (!identity)
        return text + ": no user that this may run as; give a name, or UID:GID, other than root's";
    return Assume(*identity) ? "" : std::string("the user cannot be taken: ") + std::strerror(errno);
}

// In this order: a change of the user makes a process dumpable again, and the last two want the first.
bool DropRights()
{
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && DropCapabilities() &&
           prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) == 0;
}

} // namespace

bool RenounceRights(const std::string &user, const std::vector<int> &descriptors, std::string *fault)
{
    if (!HasOneThread() || !CloseInheritedExcept(descriptors)) {
        *fault = "there are several threads before rights are given up, or /proc is not mounted";
        return false;
    }
    if (*fault = TakeUser(user); !fault->empty())
        return false;
    if (!DropRights())
        *fault = std::string("rights cannot be given up: ") + std::strerror(errno);
    return fault->empty();
}

bool Confine(const Confinement &confinement, std::string *fault)
{
    return RenounceRights(confinement.user, confinement.descriptors, fault) &&
           RestrictPaths(confinement, fault) && RestrictSystemCalls(confinement, fault);
}

} // namespace host
