// SPDX-License-Identifier: Apache-2.0
#include "bench/allocation_counter.h"

#include <atomic>
#include <cstddef>

static std::atomic<bool> counting = false;
static std::atomic<std::uint64_t> count = 0;
static std::atomic<std::uint64_t> bytes = 0;

static void Note(std::size_t size)
{
    if (counting) {
        ++count;
        bytes += size;
    }
}

// AddressSanitizer has an allocator of its own, and hooks to watch it.
#ifdef PBA_SANITIZE

#include <sanitizer/allocator_interface.h>

static const int installed = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void *, std::size_t size) { Note(size); }, [](const volatile void *) {});

#else

extern "C" void *__libc_malloc(std::size_t size);
extern "C" void *__libc_realloc(void *block, std::size_t size);

extern "C" void *malloc(std::size_t size) noexcept
{
    Note(size);
    return __libc_malloc(size);
}

extern "C" void *realloc(void *block, std::size_t size) noexcept
{
    Note(size);
    return __libc_realloc(block, size);
}

#endif

void allocation_counter::Start()
{
    count = bytes = 0;
    counting = true;
}

allocation_counter::Totals allocation_counter::Stop()
{
    counting = false;
    return {count, bytes};
}
