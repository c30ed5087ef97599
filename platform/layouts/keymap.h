// SPDX-License-Identifier: Apache-2.0
// What the keys of one layout are: scan codes (the kernel's plus 8, as the toolkit and X have them) and
// modifiers in, symbols and text out. Not for several threads at once.
#pragma once

#include <cstdint>
#include <string>

#include "platform/layouts/layout_table.h"
#include "platform/layouts/xkb_objects.h"

namespace layouts {

struct Modifiers
{
    bool shift = false;
    bool level3 = false; // AltGr
    bool level5 = false;
    bool capsLock = false;
    bool numLock = false;

    bool operator==(const Modifiers &) const = default;
};

class Keymap
{
public:
    // Compiled on first use and kept for good. Null when it cannot be compiled, since the data of the X
    // keyboard extension is missing.
    static const Keymap *Of(const Layout &layout);

    const Layout &ItsLayout() const { return m_layout; }

    // What the key is without modifiers: its letter, or the modifier that it is.
    xkb_keysym_t BaseSymbol(std::uint32_t key) const;
    // Whether some modifiers let the key type a character or be a dead key.
    bool IsCharacterKey(std::uint32_t key) const;

    // NoSymbol for a key that has none with these modifiers. One with several symbols gives the last.
    xkb_keysym_t Symbol(std::uint32_t key, const Modifiers &modifiers) const;
    // As it stands on the key: dead keys have none. Control characters are left out.
    std::u16string Text(std::uint32_t key, const Modifiers &modifiers) const;

private:
    Keymap(const Layout &layout, XkbKeymap keymap);

    xkb_mod_mask_t MaskOf(xkb_keysym_t modifier) const;
    void Hold(const Modifiers &modifiers) const;

    const Layout &m_layout;
    XkbKeymap m_keymap;
    XkbState m_state;
    xkb_mod_mask_t m_shift;
    xkb_mod_mask_t m_level3;
    xkb_mod_mask_t m_level5;
    xkb_mod_mask_t m_capsLock;
    xkb_mod_mask_t m_numLock;
};

// Whether the symbol waits for the next key: an accent and the like.
bool IsDead(xkb_keysym_t symbol);

// UTF-16 of UTF-8; empty when it is none.
std::u16string ToUtf16(const char *text);

} // namespace layouts
