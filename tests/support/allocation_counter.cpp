#include "allocation_counter.h"

#include <atomic>
#include <cstddef>

namespace {

std::atomic<bool> counting = false;
std::atomic<std::uint64_t> count = 0;
std::atomic<std::uint64_t> bytes = 0;

void Note(std::size_t size)
{
    if (counting) {
        ++count;
        bytes += size;
    }
}

} // namespace

// AddressSanitizer has an allocator of its own, and hooks to watch it.
#ifdef PBA_SANITIZE

#include <sanitizer/allocator_interface.h>

namespace {

const int installed = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void *, std::size_t size) { Note(size); }, [](const volatile void *) {});

} // namespace

#else

extern "C" {

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t number, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);

void *malloc(std::size_t size) noexcept
{
    Note(size);
    return __libc_malloc(size);
}

void *calloc(std::size_t number, std::size_t size) noexcept
{
    Note(number * size);
    return __libc_calloc(number, size);
}

void *realloc(void *block, std::size_t size) noexcept
{
    Note(size);
    return __libc_realloc(block, size);
}

} // extern "C"

#endif

namespace allocation_counter {

void Start()
{
    count = 0;
    bytes = 0;
    counting = true;
}

Totals Stop()
{
    counting = false;
    return {count, bytes};
}

} // namespace allocation_counter
