// SPDX-License-Identifier: Apache-2.0
#include "module/views/virtual_keys.h"

#include <algorithm>
#include <array>

#include <Qt>

namespace pba {

namespace {

// So many codes from `first` on stand for keys that follow each other in the toolkit too.
struct Run
{
    std::uint8_t first;
    std::uint8_t count;
    std::uint32_t key;
};

constexpr Run kRuns[] = {
    {0x03, 1, Qt::Key_Cancel},
    {0x08, 1, Qt::Key_Backspace},
    {0x09, 1, Qt::Key_Tab},
    {0x0C, 1, Qt::Key_Clear},
    {0x0D, 1, Qt::Key_Enter},
    {0x10, 1, Qt::Key_Shift},
    {0x11, 1, Qt::Key_Control},
    {0x12, 1, Qt::Key_Alt},
    {0x13, 1, Qt::Key_Pause},
    {0x14, 1, Qt::Key_CapsLock},
    {0x1B, 1, Qt::Key_Escape},
    {0x1F, 1, Qt::Key_Mode_switch},
    {0x20, 1, Qt::Key_Space},
    {0x21, 1, Qt::Key_PageUp},
    {0x22, 1, Qt::Key_PageDown},
    {0x23, 1, Qt::Key_End},
    {0x24, 1, Qt::Key_Home},
    {0x25, 4, Qt::Key_Left}, // Left, Up, Right, Down
    {0x29, 1, Qt::Key_Select},
    {0x2A, 1, Qt::Key_Printer},
    {0x2B, 1, Qt::Key_Execute},
    {0x2C, 1, Qt::Key_Print},
    {0x2D, 1, Qt::Key_Insert},
    {0x2E, 1, Qt::Key_Delete},
    {0x2F, 1, Qt::Key_Help},
    {0x30, 10, Qt::Key_0},
    {0x41, 26, Qt::Key_A},
    {0x5B, 1, Qt::Key_Meta},
    {0x5C, 1, Qt::Key_Meta},
    {0x5D, 1, Qt::Key_Menu},
    {0x5F, 1, Qt::Key_Sleep},
    {0x60, 10, Qt::Key_0},       // on the number pad
    {0x6A, 6, Qt::Key_Asterisk}, // * + , - . /
    {0x70, 24, Qt::Key_F1},
    {0x90, 1, Qt::Key_NumLock},
    {0x91, 1, Qt::Key_ScrollLock},
    {0x93, 1, Qt::Key_Massyo},
    {0x94, 1, Qt::Key_Touroku},
    {0xA0, 1, Qt::Key_Shift},
    {0xA1, 1, Qt::Key_Shift},
    {0xA2, 1, Qt::Key_Control},
    {0xA3, 1, Qt::Key_Control},
    {0xA4, 1, Qt::Key_Alt},
    {0xA5, 1, Qt::Key_Alt},
    {0xA6, 1, Qt::Key_Back},
    {0xA7, 1, Qt::Key_Forward},
    {0xA8, 1, Qt::Key_Refresh},
    {0xA9, 1, Qt::Key_Stop},
    {0xAA, 1, Qt::Key_Search},
    {0xAB, 1, Qt::Key_Favorites},
    {0xAC, 1, Qt::Key_HomePage},
    {0xAD, 1, Qt::Key_VolumeMute},
    {0xAE, 1, Qt::Key_VolumeDown},
    {0xAF, 1, Qt::Key_VolumeUp},
    {0xB0, 1, Qt::Key_MediaNext},
    {0xB1, 1, Qt::Key_MediaPrevious},
    {0xB2, 1, Qt::Key_MediaStop},
    {0xB3, 1, Qt::Key_MediaPlay},
    {0xB4, 1, Qt::Key_LaunchMail},
    {0xB5, 1, Qt::Key_LaunchMedia},
    {0xB6, 2, Qt::Key_Launch0},
    {0xBA, 1, Qt::Key_Semicolon},
    {0xBB, 1, Qt::Key_Equal},
    {0xBC, 4, Qt::Key_Comma}, // , - . /
    {0xC0, 1, Qt::Key_QuoteLeft},
    {0xDB, 3, Qt::Key_BracketLeft}, // [ \ ]
    {0xDE, 1, Qt::Key_Apostrophe},
    {0xFA, 1, Qt::Key_Play},
    {0xFB, 1, Qt::Key_Zoom},
    {0xFE, 1, Qt::Key_Clear},
};

constexpr std::array<std::uint32_t, 256> MakeTable()
{
    std::array<std::uint32_t, 256> table{};
    table.fill(Qt::Key_unknown);
    for (const Run &run : kRuns) {
        for (std::uint32_t i = 0; i < run.count; ++i)
            table[run.first + i] = run.key + i;
    }
    return table;
}

constexpr std::array<std::uint32_t, 256> kTable = MakeTable();
static_assert(std::ranges::count(kTable, std::uint32_t{Qt::Key_unknown}) == 106);

} // namespace

std::uint32_t ToolkitKey(std::uint16_t virtualKey)
{
    return virtualKey < kTable.size() ? kTable[virtualKey] : std::uint32_t{Qt::Key_unknown};
}

} // namespace pba
