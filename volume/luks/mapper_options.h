// SPDX-License-Identifier: Apache-2.0
// What /etc/crypttab says of a mapping.
#pragma once

#include <cstdint>
#include <string_view>

namespace volume {

// The fourth field of a line, such as "luks,discard,no-read-workqueue", as activation flags of libcryptsetup.
// Options that concern other steps, such as "initramfs" or "tries=3", give none.
std::uint32_t ActivationFlags(std::string_view crypttabOptions);

} // namespace volume
