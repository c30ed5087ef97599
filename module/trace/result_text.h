// SPDX-License-Identifier: Apache-2.0
// The English texts of result codes, for support staff. Never translated.
#pragma once

#include <cstdint>

#include "kro/string.h"

namespace kro {

// Never null.
const char16_t *GetResultCodeText(std::uint32_t code);
wstring_t ResultCodeToString(std::uint32_t code);

} // namespace kro
