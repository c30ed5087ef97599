// SPDX-License-Identifier: Apache-2.0
#include "platform/layouts/typeable.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/layouts/composer.h"

namespace layouts {

namespace {

// The block of letters and digits, the space bar, and the keys that European, Brazilian and Japanese
// keyboards have besides.
constexpr std::uint32_t kFirstKey = 10;
constexpr std::uint32_t kLastKey = 65;
constexpr std::uint32_t kFurtherKeys[] = {94, 97, 132};

using Texts = std::set<std::u16string, std::less<>>;

std::vector<std::uint32_t> Keys()
{
    std::vector<std::uint32_t> keys(std::begin(kFurtherKeys), std::end(kFurtherKeys));
    for (std::uint32_t key = kFirstKey; key <= kLastKey; ++key)
        keys.push_back(key);
    return keys;
}

// Whether some key that keyboards have holds the modifier: without one its levels cannot be reached.
bool HasKeyFor(const Keymap &keymap, xkb_keysym_t modifier)
{
    constexpr std::uint32_t kModifierKeys[] = {37, 51, 64, 66, 94, 105, 108, 133, 134, 135};
    return std::any_of(std::begin(kModifierKeys), std::end(kModifierKeys),
                       [&](std::uint32_t key) { return keymap.BaseSymbol(key) == modifier; });
}

std::vector<Modifiers> Combinations(const Keymap &keymap)
{
    std::vector<Modifiers> combinations;
    const int level3 = HasKeyFor(keymap, XKB_KEY_ISO_Level3_Shift) ? 1 : 0;
    const int level5 = HasKeyFor(keymap, XKB_KEY_ISO_Level5_Shift) ? 1 : 0;
    for (int bits = 0; bits < 16; ++bits) {
        const bool wantsLevel3 = bits & 4;
        const bool wantsLevel5 = bits & 8;
        if (wantsLevel3 <= level3 && wantsLevel5 <= level5)
            combinations.push_back({.shift = (bits & 1) != 0,
                                    .level3 = wantsLevel3,
                                    .level5 = wantsLevel5,
                                    .capsLock = (bits & 2) != 0});
    }
    return combinations;
}

Texts FindTexts(const Keymap &keymap)
{
    Texts texts;
    std::set<xkb_keysym_t> symbols;
    Composer composer;
    composer.SetLayout(keymap.ItsLayout());
    for (const Modifiers &modifiers : Combinations(keymap)) {
        for (const std::uint32_t key : Keys()) {
            const xkb_keysym_t symbol = keymap.Symbol(key, modifiers);
            symbols.insert(symbol);
            composer.Reset();
            if (composer.Feed(symbol).step == Composer::Result::Plain)
                texts.insert(keymap.Text(key, modifiers));
        }
    }
    for (auto &text : composer.Compositions({symbols.begin(), symbols.end()}))
        texts.insert(std::move(text));
    texts.erase(u"");
    return texts;
}

const Texts &TextsOf(const Keymap &keymap)
{
    static std::map<std::uint32_t, Texts> s_texts;
    const std::uint32_t id = keymap.ItsLayout().id;
    const auto known = s_texts.find(id);
    return known != s_texts.end() ? known->second : s_texts.emplace(id, FindTexts(keymap)).first->second;
}

} // namespace

bool CanType(const Keymap &keymap, std::u16string_view text)
{
    const Texts &texts = TextsOf(keymap);
    std::size_t longest = 0;
    for (const auto &one : texts)
        longest = std::max(longest, one.size());
    // Whether the text can be typed up to each of its places.
    std::vector<bool> reached(text.size() + 1);
    reached[0] = true;
    for (std::size_t end = 1; end <= text.size(); ++end) {
        for (std::size_t length = 1; length <= std::min(longest, end) && !reached[end]; ++length)
            reached[end] = reached[end - length] && texts.contains(text.substr(end - length, length));
    }
    return reached[text.size()];
}

} // namespace layouts
