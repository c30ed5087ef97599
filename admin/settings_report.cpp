// SPDX-License-Identifier: Apache-2.0
// Settings for a person to read: what is in them and what is wrong with them.
#include "admin/settings.h"

#include <cstdio>
#include <iostream>

#include "admin/failure.h"
#include "admin/hotkey_text.h"
#include "admin/json_output.h"
#include "admin/settings_file.h"
#include "admin/settings_json.h"
#include "base/text.h"
#include "platform/layouts/layout_table.h"

namespace admin {
namespace {

std::vector<std::string> Lines(const std::string &path, const SettingsFile &file, bool faults)
{
    std::vector<std::string> lines;
    for (const Finding &finding : file.findings) {
        if (finding.isFault == faults)
            lines.push_back(path + ": " + finding.Line());
    }
    return lines;
}

std::string Readable(const std::u16string &text)
{
    return base::Printable(base::ToUtf8(text));
}

void PrintHotkey(const char *what, const pba::Hotkey &hotkey)
{
    std::cout << what << FormatHotkey(hotkey) << '\n';
}

void PrintLayout(const pba::KeyboardLayout &layout)
{
    const layouts::Layout *known = layouts::Find(layout.layoutId);
    char id[9];
    std::snprintf(id, sizeof id, "%08x", layout.layoutId);
    std::cout << "  " << id << "  " << Readable(layout.name) << " ("
              << (known ? known->name : "unknown layout") << ")";
    if (layout.selectHotkey.key != 0)
        std::cout << ", " << FormatHotkey(layout.selectHotkey);
    std::cout << '\n';
}

void Print(const pba::ConstantSettingsRecord &record)
{
    const pba::PrebootSettings &settings = record.prebootSettings;
    std::cout << "Host name:       " << Readable(record.hostName) << '\n';
    PrintHotkey("Next language:   ", settings.languageSwitchHotkey);
    PrintHotkey("Next layout:     ", settings.keyboardLayoutSwitchHotkey);
    PrintHotkey("Caps Lock off:   ", settings.capsLockTurnOffHotkey);
    for (const pba::InputLanguage &language : settings.inputLanguages) {
        std::cout << Readable(language.name) << " (" << language.languageId << ")\n";
        for (const pba::KeyboardLayout &layout : language.layouts)
            PrintLayout(layout);
    }
}

void PrintFindings(const SettingsFile &file)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const Finding &finding : file.findings) {
        list.push_back({{"kind", finding.isFault ? "fault" : "warning"},
                        {"place", finding.place},
                        {"text", finding.what}});
    }
    PrintJson(list);
}

} // namespace

void ShowSettings(const SettingsOptions &options)
{
    const SettingsFile file = ReadSettingsFile(options.input);
    if (!file.record)
        throw Failure(Lines(options.input, file, true));
    if (options.json)
        std::cout << WriteSettings(*file.record);
    else
        Print(*file.record);
}

void CheckSettings(const SettingsOptions &options)
{
    const SettingsFile file = ReadSettingsFile(options.input);
    if (options.json)
        PrintFindings(file);
    for (const std::string &warning : Lines(options.input, file, false)) {
        if (!options.json)
            std::cout << "warning: " << base::Printable(warning) << '\n';
    }
    if (file.HasFaults())
        throw Failure(options.json ? std::vector<std::string>{} : Lines(options.input, file, true));
    if (!options.json && file.findings.empty())
        std::cout << base::Printable(options.input) << ": in order\n";
}

} // namespace admin
