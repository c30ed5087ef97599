// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/mapper_options.h"

#include <algorithm>

#include <libcryptsetup.h>

namespace volume {
namespace {

struct Option
{
    std::string_view name;
    std::uint32_t flag;
};

// As crypttab(5) names them.
constexpr Option kOptions[] = {
    {"discard", CRYPT_ACTIVATE_ALLOW_DISCARDS},
    {"no-read-workqueue", CRYPT_ACTIVATE_NO_READ_WORKQUEUE},
    {"no-write-workqueue", CRYPT_ACTIVATE_NO_WRITE_WORKQUEUE},
    {"readonly", CRYPT_ACTIVATE_READONLY},
    {"read-only", CRYPT_ACTIVATE_READONLY},
    {"same-cpu-crypt", CRYPT_ACTIVATE_SAME_CPU_CRYPT},
    {"submit-from-crypt-cpus", CRYPT_ACTIVATE_SUBMIT_FROM_CRYPT_CPUS},
};

} // namespace

std::uint32_t ActivationFlags(std::string_view crypttabOptions)
{
    std::uint32_t flags = 0;
    while (!crypttabOptions.empty()) {
        const std::size_t length = std::min(crypttabOptions.find(','), crypttabOptions.size());
        for (const Option &option : kOptions) {
            if (option.name == crypttabOptions.substr(0, length))
                flags |= option.flag;
        }
        crypttabOptions.remove_prefix(std::min(length + 1, crypttabOptions.size()));
    }
    return flags;
}

} // namespace volume
