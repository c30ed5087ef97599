#include "process_protection.h"

#include <sys/prctl.h>
#include <sys/resource.h>

namespace host {

// Either alone would leave a gap: a dump that is piped to a program ignores the limit.
void ProtectProcess()
{
    const rlimit none{};
    setrlimit(RLIMIT_CORE, &none);
    prctl(PR_SET_DUMPABLE, 0);
}

} // namespace host
