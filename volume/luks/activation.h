// SPDX-License-Identifier: Apache-2.0
// Maps an opened volume by the device mapper, and looks up what is mapped.
#pragma once

#include <cstdint>
#include <string>

#include "base/secret.h"
#include "volume/luks/header.h"

namespace volume {

// Maps the volume, with these flags of libcryptsetup and those that its header keeps, and proves it: see
// IsActiveAs.
[[nodiscard]] Error Activate(Header &header, const std::string &mapperName, std::uint32_t flags,
                             const base::Secret &volumeKey);
// Looked up, not remembered: the name is active, it is this volume, and the device below is ours.
bool IsActiveAs(const Header &header, const std::string &mapperName);
// Whether Activate could succeed: the device mapper answers, and the name is free or ours.
[[nodiscard]] Error CheckMapperName(const Header &header, const std::string &mapperName);

} // namespace volume
