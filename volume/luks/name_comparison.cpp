// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/name_comparison.h"

#include <cstdlib>
#include <memory>
#include <new>

#include <utf8proc.h>

namespace volume {

std::string FoldName(std::string_view name)
{
    utf8proc_uint8_t *mapped = nullptr;
    const utf8proc_ssize_t size = utf8proc_map(
        reinterpret_cast<const utf8proc_uint8_t *>(name.data()), static_cast<utf8proc_ssize_t>(name.size()),
        &mapped, static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE | UTF8PROC_CASEFOLD));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(mapped, std::free);
    if (size == UTF8PROC_ERROR_NOMEM)
        throw std::bad_alloc();
    if (size < 0)
        return std::string(name);
    return {reinterpret_cast<const char *>(mapped), static_cast<std::size_t>(size)};
}

} // namespace volume
