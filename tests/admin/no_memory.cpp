// Preloaded into a program: from the allocation number PBA_NO_MEMORY_AT of its main function on there is no
// memory left. What stands before is the loader's.
#include <cstdlib>
#include <dlfcn.h>

extern "C" void *__libc_malloc(std::size_t size);

namespace {

using Main = int (*)(int, char **, char **);
using Start = int (*)(Main, int, char **, void (*)(), void (*)(), void (*)(), void *);

constexpr long kPlenty = -1;
Main s_main = nullptr;
long s_left = kPlenty;

int CountedMain(int argc, char **argv, char **environment)
{
    s_left = std::atol(std::getenv("PBA_NO_MEMORY_AT"));
    const int result = s_main(argc, argv, environment);
    s_left = kPlenty;
    return result;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) void *malloc(std::size_t size) noexcept
{
    if (s_left == 0)
        return nullptr;
    s_left -= s_left > 0;
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) int __libc_start_main(Main main, int argc, char **argv, void (*init)(),
                                                             void (*fini)(), void (*loader)(), void *stack)
{
    s_main = main;
    const auto start = reinterpret_cast<Start>(dlsym(RTLD_NEXT, "__libc_start_main"));
    return start(CountedMain, argc, argv, init, fini, loader, stack);
}

} // extern "C"
