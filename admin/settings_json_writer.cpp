// SPDX-License-Identifier: Apache-2.0
#include "admin/settings_json.h"

#include <cstdio>

#include <nlohmann/json.hpp>

#include "admin/hotkey_text.h"
#include "base/text.h"

namespace admin {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kIndent = 2;

Json Layout(const pba::KeyboardLayout &layout)
{
    char id[9];
    std::snprintf(id, sizeof id, "%08x", layout.layoutId);
    Json json{{"layoutId", id}, {"name", base::ToUtf8(layout.name)}};
    if (layout.selectHotkey.key != 0)
        json["selectHotkey"] = FormatHotkey(layout.selectHotkey);
    return json;
}

Json Language(const pba::InputLanguage &language)
{
    Json layouts = Json::array();
    for (const pba::KeyboardLayout &layout : language.layouts)
        layouts.push_back(Layout(layout));
    return {{"languageId", language.languageId}, {"name", base::ToUtf8(language.name)}, {"layouts", layouts}};
}

} // namespace

std::string WriteSettings(const pba::ConstantSettingsRecord &record)
{
    const pba::PrebootSettings &settings = record.prebootSettings;
    Json languages = Json::array();
    for (const pba::InputLanguage &language : settings.inputLanguages)
        languages.push_back(Language(language));
    const Json json{{"hostName", base::ToUtf8(record.hostName)},
                    {"inputLanguages", languages},
                    {"languageSwitchHotkey", FormatHotkey(settings.languageSwitchHotkey)},
                    {"keyboardLayoutSwitchHotkey", FormatHotkey(settings.keyboardLayoutSwitchHotkey)},
                    {"capsLockTurnOffHotkey", FormatHotkey(settings.capsLockTurnOffHotkey)}};
    // For people to edit, unless there is something in it that they would not see.
    const bool readable = base::IsPlain(json.dump());
    return json.dump(kIndent, ' ', !readable) + "\n";
}

} // namespace admin
