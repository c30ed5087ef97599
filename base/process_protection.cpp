// SPDX-License-Identifier: Apache-2.0
#include "base/process_protection.h"

#include <cerrno>
#include <fcntl.h>
#include <linux/capability.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace base {
namespace {

// Opened the wrong way round, so that using it fails as it does with a closed stream. A new file gets the
// lowest free number.
void OccupyStandardStreams()
{
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (fcntl(stream, F_GETFD) < 0 && errno == EBADF)
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

// Under a limit allocations would fail some day, and nobody could log on.
bool MayLockAll()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct rights[_LINUX_CAPABILITY_U32S_3]{};
    if (syscall(SYS_capget, &header, rights) == 0 && (rights[0].effective & 1U << CAP_IPC_LOCK) != 0)
        return true;
    rlimit limit{};
    return getrlimit(RLIMIT_MEMLOCK, &limit) == 0 && limit.rlim_cur == RLIM_INFINITY;
}

} // namespace

// Against core dumps either alone would leave a gap: one that is piped to a program ignores the limit.
void ProtectProcess()
{
    const rlimit none{};
    setrlimit(RLIMIT_CORE, &none);
    prctl(PR_SET_DUMPABLE, 0);
    OccupyStandardStreams();
}

// Pages are locked when they are first used: what is never touched costs nothing.
void LockMemory()
{
    if (MayLockAll())
        mlockall(MCL_CURRENT | MCL_FUTURE | MCL_ONFAULT);
}

} // namespace base
