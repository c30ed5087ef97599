// SPDX-License-Identifier: Apache-2.0
// Preloaded into all processes of a measured program: loads the probe into the one that has the toolkit, and
// leaves the others as they are.
#include <cstdlib>

#include <dlfcn.h>

namespace {

__attribute__((constructor)) void Load()
{
    if (const char *probe = std::getenv("BENCH_PAINT_PROBE");
        probe && dlsym(RTLD_DEFAULT, "_ZN16QCoreApplication4selfE"))
        dlopen(probe, RTLD_NOW);
}

} // namespace
