#include "base/process_protection.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace volume {
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

} // namespace

// Against core dumps either alone would leave a gap: one that is piped to a program ignores the limit.
void ProtectProcess()
{
    const rlimit none{};
    setrlimit(RLIMIT_CORE, &none);
    prctl(PR_SET_DUMPABLE, 0);
    OccupyStandardStreams();
}

} // namespace volume
