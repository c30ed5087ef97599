// SPDX-License-Identifier: Apache-2.0
// The keyboard layouts that the platform knows: Windows layout identifiers and what they are among the
// layouts of the X keyboard extension. Free of the toolkit and of the platform, so that tools can share it.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace layouts {

struct Layout
{
    std::uint32_t id;
    const char *name; // English, UTF-8
    const char *xkbLayout;
    const char *xkbVariant; // "" for the layout's own
};

// By rising identifier.
std::span<const Layout> All();

// Null when it is not known.
const Layout *Find(std::uint32_t id);

// Those that a system set up with these names has, by rising identifier.
std::vector<const Layout *> FindByXkb(std::string_view xkbLayout, std::string_view xkbVariant);

// Those of the same language as an identifier, that of the same country first; none for a language that no
// layout is known for.
std::vector<const Layout *> OfSameLanguage(std::uint32_t id);

} // namespace layouts
