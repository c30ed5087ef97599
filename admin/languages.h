// SPDX-License-Identifier: Apache-2.0
// Languages as settings name them: an identifier and the name that their speakers use.
#pragma once

#include <cstdint>
#include <string_view>

namespace admin {

// Of the language that a keyboard layout was made for; "" for one that is not known.
const char *LanguageName(std::uint16_t languageId);

// Whether a locale such as "de_DE.UTF-8" speaks the language, whatever the country.
bool IsLocaleOf(std::string_view locale, std::uint16_t languageId);

} // namespace admin
