// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace base {

// However often the kernel takes a part only, or is interrupted. False, with errno, when it takes no more.
[[nodiscard]] bool WriteAll(int file, std::string_view bytes);

} // namespace base
