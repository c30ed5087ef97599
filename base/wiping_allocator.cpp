// SPDX-License-Identifier: Apache-2.0
// The program's free and realloc, which take the place of the C library's for the toolkit and the view module
// too: what is given back is wiped first. A typed character passes through many short-lived strings of the
// toolkit, and none of them can be asked to clean up.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <malloc.h>

namespace {

// What is larger came from the kernel by itself and goes back to it, which wipes it.
constexpr std::size_t kLargest = 32 * 1024 * 1024;

} // namespace

extern "C" {

void __libc_free(void *memory); // NOLINT(bugprone-reserved-identifier): the C library's own

__attribute__((visibility("default"))) void free(void *memory) noexcept
{
    const std::size_t room = malloc_usable_size(memory);
    if (room > 0 && room <= kLargest)
        explicit_bzero(memory, room);
    __libc_free(memory);
}

// Never moves memory by itself, as the library does, since that would leave the old place as it was.
__attribute__((visibility("default"))) void *realloc(void *memory, std::size_t size) noexcept
{
    if (!memory)
        return std::malloc(size);
    const std::size_t room = malloc_usable_size(memory);
    if (size > 0 && size <= room && size >= room / 2) {
        explicit_bzero(static_cast<char *>(memory) + size, room - size);
        return memory;
    }
    void *moved = size > 0 ? std::malloc(size) : nullptr;
    if (moved)
        std::memcpy(moved, memory, std::min(size, room));
    if (moved || size == 0)
        free(memory);
    return moved;
}

} // extern "C"
