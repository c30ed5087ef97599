// SPDX-License-Identifier: Apache-2.0
// Looks up in sysfs what a device-mapper name stands for. That a program ended well proves nothing about the
// disk; the running mapping does.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace volume {

// Whether `name` is a LUKS2 mapping of the volume `luksUuid` (with or without dashes) over the very device,
// or over a loop device of the very file, at `volumePath`. `sysfs` is "/sys" but in tests.
bool IsMappedOver(const std::filesystem::path &sysfs, std::string_view name, std::string luksUuid,
                  const std::string &volumePath);

} // namespace volume
