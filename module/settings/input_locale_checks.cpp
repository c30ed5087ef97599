// SPDX-License-Identifier: Apache-2.0
#include "module/settings/input_locale_checks.h"

#include "settings_format/hotkey_predicates.h"
#include "module/trace/trace.h"

namespace fde::boot {

namespace {

using pba::TraceError;
using pba::TraceHex16;

constexpr char kCheckHotkey[] = "fde::boot::`anonymous-namespace'::CheckHotkey";
constexpr char kCheckInputLocales[] = "fde::boot::CheckInputLocales";

kro::result_t CheckHotkey(const pba::Hotkey &hotkey)
{
    if (IsHotkeyAccepted(hotkey))
        return kro::kOk;
    TraceError(kCheckHotkey, __LINE__, kro::kInvalidArgument)
        << "Hotkey " << TraceHex16{hotkey.key}
        << " is modifier. PBA does not support modifiers hot keys with more than one modifier. Modifiers: "
        << TraceHex16{hotkey.modifiers};
    return kro::kInvalidArgument;
}

kro::result_t CheckGlobalHotkey(const pba::Hotkey &hotkey, const char *name)
{
    const kro::result_t result = CheckHotkey(hotkey);
    if (kro::Failed(result))
        TraceError(kCheckInputLocales, __LINE__, result) << name << " is invalid";
    return result;
}

kro::result_t CheckGlobalHotkeys(const pba::PrebootSettings &settings)
{
    kro::result_t result = CheckGlobalHotkey(settings.languageSwitchHotkey, "languageSwitchHotkey");
    if (!kro::Failed(result))
        result = CheckGlobalHotkey(settings.keyboardLayoutSwitchHotkey, "keyboardLayoutSwitchHotkey");
    if (!kro::Failed(result))
        result = CheckGlobalHotkey(settings.capsLockTurnOffHotkey, "capsLockTurnOffHotkey");
    return result;
}

// A layout without a hot key passes: key 0 is no modifier key.
kro::result_t CheckLayout(const pba::InputLanguage &language, const pba::KeyboardLayout &layout)
{
    const kro::result_t result = CheckHotkey(layout.selectHotkey);
    if (kro::Failed(result)) {
        TraceError(kCheckInputLocales, __LINE__, result)
            << "Layout select hot key is invalid. Language: " << language.name.c_str() << "("
            << std::uint32_t{language.languageId} << "). Layout: " << layout.name.c_str() << "("
            << layout.layoutId << ").";
    }
    return result;
}

kro::result_t CheckLanguage(const pba::InputLanguage &language)
{
    if (language.layouts.empty()) {
        TraceError(kCheckInputLocales, __LINE__, kro::kInvalidArgument)
            << "PrebootSettings: no keyboard layouts for " << language.name.c_str() << "("
            << std::uint32_t{language.languageId}
            << "). PBA expects at least one keyboard layout per language.";
        return kro::kInvalidArgument;
    }
    for (const pba::KeyboardLayout &layout : language.layouts) {
        const kro::result_t result = CheckLayout(language, layout);
        if (kro::Failed(result))
            return result;
    }
    return kro::kOk;
}

} // namespace

kro::result_t CheckInputLocales(const pba::PrebootSettings &settings)
{
    const kro::result_t result = CheckGlobalHotkeys(settings);
    if (kro::Failed(result))
        return result;
    if (settings.inputLanguages.empty()) {
        TraceError(kCheckInputLocales, __LINE__, kro::kInvalidArgument)
            << "PrebootSettings: no input languages. PBA expects at least one input language.";
        return kro::kInvalidArgument;
    }
    for (const pba::InputLanguage &language : settings.inputLanguages) {
        const kro::result_t languageResult = CheckLanguage(language);
        if (kro::Failed(languageResult))
            return languageResult;
    }
    return kro::kOk;
}

} // namespace fde::boot
