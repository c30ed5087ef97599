// SPDX-License-Identifier: Apache-2.0
// Which input languages are written from right to left.
#pragma once

#include <algorithm>
#include <cstdint>

namespace pba {

// By the primary language, the low 10 bits of a language identifier.
constexpr bool IsRightToLeft(std::uint16_t languageId)
{
    // Arabic, Dari, Divehi, Hebrew, Kashmiri, Persian, Sindhi, Syriac, Uyghur, Urdu
    constexpr std::uint16_t kLanguages[] = {0x01, 0x8c, 0x65, 0x0d, 0x60, 0x29, 0x59, 0x5a, 0x80, 0x20};
    return std::ranges::find(kLanguages, languageId & 0x3ff) != std::end(kLanguages);
}

} // namespace pba
