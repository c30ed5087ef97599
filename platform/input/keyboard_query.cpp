// SPDX-License-Identifier: Apache-2.0
// What hosts ask about keyboard layouts.
#include <new>

#include "platform/application.h"
#include "platform/layouts/layout_table.h"
#include "platform/layouts/typeable.h"
#include "pbe/keyboard.h"

using pbe::Application;

const char *PbeGetKeyboardLayoutName(std::uint32_t layout)
{
    const layouts::Layout *found = layouts::Find(layout);
    return found ? found->name : nullptr;
}

kro::result_t PbeCanTypeText(std::uint32_t layout, const char16_t *text, std::size_t length, bool *canType)
{
    if (!canType || (!text && length > 0))
        return kro::kInvalidArgument;
    *canType = false;
    try {
        const layouts::Layout *found = layouts::Find(layout);
        const layouts::Keymap *keymap = found ? layouts::Keymap::Of(*found) : nullptr;
        if (!keymap)
            return kro::kNotFound;
        *canType = layouts::CanType(*keymap, std::u16string_view(text, length));
    } catch (const std::bad_alloc &) {
        return kro::kOutOfMemory;
    }
    return kro::kOk;
}

std::uint32_t PbeGetKeyboardLayout()
{
    Application *application = Application::Current();
    try {
        return application ? application->keyboard.Layout() : 0;
    } catch (const std::bad_alloc &) {
        return 0;
    }
}

bool PbeIsCapsLockOn()
{
    const Application *application = Application::Current();
    return application && application->keyboard.IsCapsLockOn();
}
