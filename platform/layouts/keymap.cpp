// SPDX-License-Identifier: Apache-2.0
#include "platform/layouts/keymap.h"

#include <map>
#include <memory>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace layouts {

namespace {

// Longer texts stand on no key.
constexpr std::size_t kTextSize = 64;
constexpr char32_t kFirstPrintable = 0x20;
constexpr char32_t kDelete = 0x7F;

XkbKeymap Compile(const Layout &layout)
{
    if (!SharedContext())
        return nullptr;
    // Everything is named, so that the environment has no say.
    const xkb_rule_names names{"evdev", "pc105", layout.xkbLayout, layout.xkbVariant, ""};
    return XkbKeymap(xkb_keymap_new_from_names(SharedContext(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

bool IsCharacter(xkb_keysym_t symbol)
{
    const char32_t character = xkb_keysym_to_utf32(symbol);
    return (character >= kFirstPrintable && character != kDelete) || IsDead(symbol);
}

void Append(std::u16string &text, char32_t character)
{
    constexpr char32_t kFirstPair = 0x10000;
    if (character < kFirstPair) {
        text += static_cast<char16_t>(character);
        return;
    }
    text += static_cast<char16_t>(0xD800 + ((character - kFirstPair) >> 10));
    text += static_cast<char16_t>(0xDC00 + ((character - kFirstPair) & 0x3FF));
}

} // namespace

xkb_context *SharedContext()
{
    static const XkbContext s_context(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
    return s_context.get();
}

bool IsDead(xkb_keysym_t symbol)
{
    // The block of dead keys, with room for those to come.
    return symbol >= XKB_KEY_dead_grave && symbol <= XKB_KEY_dead_grave + 0x4F;
}

std::u16string ToUtf16(const char *text)
{
    std::u16string wide;
    const auto *byte = reinterpret_cast<const unsigned char *>(text);
    while (*byte) {
        const int length = *byte < 0x80 ? 1 : *byte < 0xE0 ? 2 : *byte < 0xF0 ? 3 : 4;
        char32_t character = length == 1 ? *byte : *byte & (0x7F >> length);
        for (int i = 1; i < length; ++i) {
            if ((byte[i] & 0xC0) != 0x80)
                return {};
            character = character << 6 | (byte[i] & 0x3F);
        }
        Append(wide, character);
        byte += length;
    }
    return wide;
}

const Keymap *Keymap::Of(const Layout &layout)
{
    static std::map<std::uint32_t, std::unique_ptr<const Keymap>> s_keymaps;
    const auto known = s_keymaps.find(layout.id);
    if (known != s_keymaps.end())
        return known->second.get();
    XkbKeymap compiled = Compile(layout);
    if (!compiled)
        return nullptr;
    return (s_keymaps[layout.id] = std::unique_ptr<Keymap>(new Keymap(layout, std::move(compiled)))).get();
}

Keymap::Keymap(const Layout &layout, XkbKeymap keymap)
    : m_layout(layout)
    , m_keymap(std::move(keymap))
    , m_state(xkb_state_new(m_keymap.get()))
    , m_shift(MaskOf(XKB_KEY_Shift_L))
    , m_level3(MaskOf(XKB_KEY_ISO_Level3_Shift))
    , m_level5(MaskOf(XKB_KEY_ISO_Level5_Shift))
    // Not by its key: some layouts have another one there.
    , m_capsLock(xkb_mod_mask_t{1} << xkb_keymap_mod_get_index(m_keymap.get(), XKB_MOD_NAME_CAPS))
    , m_numLock(MaskOf(XKB_KEY_Num_Lock))
{
}

// What a modifier key does depends on the keymap: it is pressed to see.
xkb_mod_mask_t Keymap::MaskOf(xkb_keysym_t modifier) const
{
    const xkb_keycode_t last = xkb_keymap_max_keycode(m_keymap.get());
    for (xkb_keycode_t key = xkb_keymap_min_keycode(m_keymap.get()); key <= last; ++key) {
        if (BaseSymbol(key) != modifier)
            continue;
        const XkbState state(xkb_state_new(m_keymap.get()));
        xkb_state_update_key(state.get(), key, XKB_KEY_DOWN);
        return xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_EFFECTIVE);
    }
    return 0;
}

void Keymap::Hold(const Modifiers &modifiers) const
{
    const xkb_mod_mask_t held = (modifiers.shift ? m_shift : 0) | (modifiers.level3 ? m_level3 : 0) |
                                (modifiers.level5 ? m_level5 : 0);
    const xkb_mod_mask_t locked = (modifiers.capsLock ? m_capsLock : 0) | (modifiers.numLock ? m_numLock : 0);
    xkb_state_update_mask(m_state.get(), held, 0, locked, 0, 0, 0);
}

xkb_keysym_t Keymap::BaseSymbol(std::uint32_t key) const
{
    const xkb_keysym_t *symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, 0, 0, &symbols);
    return count > 0 ? symbols[0] : XKB_KEY_NoSymbol;
}

bool Keymap::IsCharacterKey(std::uint32_t key) const
{
    const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(m_keymap.get(), key, 0);
    for (xkb_level_index_t level = 0; level < levels; ++level) {
        const xkb_keysym_t *symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, 0, level, &symbols) > 0 &&
            IsCharacter(symbols[0]))
            return true;
    }
    return false;
}

xkb_keysym_t Keymap::Symbol(std::uint32_t key, const Modifiers &modifiers) const
{
    Hold(modifiers);
    const xkb_keysym_t *symbols = nullptr;
    const int count = xkb_state_key_get_syms(m_state.get(), key, &symbols);
    // A single symbol follows Caps Lock, where the key itself does not mind it.
    return count > 1 ? symbols[count - 1] : xkb_state_key_get_one_sym(m_state.get(), key);
}

std::u16string Keymap::Text(std::uint32_t key, const Modifiers &modifiers) const
{
    Hold(modifiers);
    char text[kTextSize];
    xkb_state_key_get_utf8(m_state.get(), key, text, sizeof text);
    std::u16string wide = ToUtf16(text);
    return wide.size() == 1 && (wide[0] < kFirstPrintable || wide[0] == kDelete) ? std::u16string() : wide;
}

} // namespace layouts
