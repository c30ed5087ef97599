// SPDX-License-Identifier: Apache-2.0
#include "host/screen/keyboard_hints.h"

#include "host/screen/configured_layouts.h"
#include "pbe/keyboard.h"

namespace host {

std::u16string KeyboardHints(const Texts &texts)
{
    std::u16string hints;
    const auto add = [&](const kro::wstring_t &sentence) {
        hints += hints.empty() ? u"\n\n" : u" ";
        hints += sentence.View();
    };
    const std::uint32_t layout = PbeGetKeyboardLayout();
    const std::u16string name = layout != 0 ? LayoutName(layout) : std::u16string();
    if (!name.empty())
        add(texts.Get(kKeyboardLayoutIs, name));
    if (PbeIsCapsLockOn())
        add(texts.Get(kCapsLockIsOn));
    return hints;
}

} // namespace host
