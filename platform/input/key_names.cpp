// SPDX-License-Identifier: Apache-2.0
#include "platform/input/key_names.h"

#include <algorithm>
#include <string_view>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include <QChar>
#include <QList>

#include "platform/layouts/keymap.h"

namespace pbe {

namespace {

struct Name
{
    std::uint32_t symbol;
    Qt::Key key;
};

constexpr Name kNames[] = {
    {XKB_KEY_Shift_L, Qt::Key_Shift},
    {XKB_KEY_Shift_R, Qt::Key_Shift},
    {XKB_KEY_Control_L, Qt::Key_Control},
    {XKB_KEY_Control_R, Qt::Key_Control},
    {XKB_KEY_Alt_L, Qt::Key_Alt},
    {XKB_KEY_Alt_R, Qt::Key_Alt},
    {XKB_KEY_Meta_L, Qt::Key_Meta},
    {XKB_KEY_Meta_R, Qt::Key_Meta},
    {XKB_KEY_Super_L, Qt::Key_Meta},
    {XKB_KEY_Super_R, Qt::Key_Meta},
    {XKB_KEY_ISO_Level3_Shift, Qt::Key_AltGr},
    {XKB_KEY_ISO_Level5_Shift, Qt::Key_AltGr},
    {XKB_KEY_KP_Home, Qt::Key_Home},
    {XKB_KEY_KP_Left, Qt::Key_Left},
    {XKB_KEY_KP_Up, Qt::Key_Up},
    {XKB_KEY_KP_Right, Qt::Key_Right},
    {XKB_KEY_KP_Down, Qt::Key_Down},
    {XKB_KEY_KP_Prior, Qt::Key_PageUp},
    {XKB_KEY_KP_Next, Qt::Key_PageDown},
    {XKB_KEY_KP_End, Qt::Key_End},
    {XKB_KEY_KP_Begin, Qt::Key_Clear},
    {XKB_KEY_KP_Insert, Qt::Key_Insert},
    {XKB_KEY_KP_Delete, Qt::Key_Delete},
};

struct Row
{
    std::uint32_t firstScanCode;
    std::string_view keys;
};

constexpr Row kRows[] = {
    {10, "1234567890-="},
    {24, "QWERTYUIOP[]"},
    {38, "ASDFGHJKL;'`"},
    {51, "\\ZXCVBNM,./"},
    {65, " "},
    {94, "<"},
};

} // namespace

Qt::Key KeyOfSymbol(std::uint32_t symbol)
{
    const auto *name = std::find_if(std::begin(kNames), std::end(kNames),
                                    [symbol](const Name &one) { return one.symbol == symbol; });
    if (name != std::end(kNames))
        return name->key;
    // Both number their dead keys alike.
    if (layouts::IsDead(symbol))
        return static_cast<Qt::Key>(Qt::Key_Dead_Grave + (symbol - XKB_KEY_dead_grave));
    const char32_t character = xkb_keysym_to_utf32(symbol);
    return character >= U' ' && character != 0x7F ? static_cast<Qt::Key>(QChar::toUpper(character))
                                                  : Qt::Key_unknown;
}

Qt::Key KeyOfPlace(std::uint32_t scanCode)
{
    for (const Row &row : kRows) {
        if (scanCode >= row.firstScanCode && scanCode < row.firstScanCode + row.keys.size())
            return static_cast<Qt::Key>(row.keys[scanCode - row.firstScanCode]);
    }
    return Qt::Key_unknown;
}

bool IsModifier(Qt::Key key)
{
    return QList{Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta, Qt::Key_AltGr}.contains(key);
}

bool IsKeypad(std::uint32_t scanCode)
{
    // The block, and the keys that have codes elsewhere: times, Enter, divide, equals, comma.
    constexpr std::uint32_t kOthers[] = {63, 104, 106, 125, 129};
    return (scanCode >= 79 && scanCode <= 91) ||
           std::find(std::begin(kOthers), std::end(kOthers), scanCode) != std::end(kOthers);
}

} // namespace pbe
