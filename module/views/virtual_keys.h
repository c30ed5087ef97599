// SPDX-License-Identifier: Apache-2.0
// The keys of the settings, which go by virtual-key codes, as the toolkit names them.
#pragma once

#include <cstdint>

namespace pba {

// Qt::Key_unknown for a code without a key.
std::uint32_t ToolkitKey(std::uint16_t virtualKey);

} // namespace pba
