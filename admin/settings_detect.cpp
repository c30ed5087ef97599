// SPDX-License-Identifier: Apache-2.0
// Settings made of how a system is set up.
#include "admin/settings.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <string_view>

#include "admin/failure.h"
#include "admin/languages.h"
#include "platform/layouts/layout_table.h"
#include "admin/scratch_file.h"
#include "admin/settings_json.h"
#include "admin/system_keyboard.h"
#include "base/text.h"

namespace admin {
namespace {

using layouts::Layout;

constexpr std::uint32_t kUnitedStates = 0x00000409;
constexpr char kNoHostName[] = "computer";

struct Preference
{
    std::string_view layout;
    std::string_view variant;
    std::uint32_t id;
};

// Of several identifiers the one that is meant, and names of the same keys.
constexpr Preference kPreferences[] = {
    {"us", "", kUnitedStates},    {"at", "", 0x00000407}, {"ba", "", 0x0000041a},
    {"bg", "", 0x00030402},       {"br", "", 0x00010416}, {"ch", "fr", 0x0000100c},
    {"dk", "", 0x00000406},       {"es", "", 0x0000040a}, {"fi", "", 0x0000040b},
    {"fr", "azerty", 0x0000040c}, {"hr", "", 0x0000041a}, {"hu", "standard", 0x0000040e},
    {"it", "", 0x00000410},       {"nl", "", 0x00000413}, {"no", "", 0x00000414},
    {"pk", "", 0x00000420},       {"si", "", 0x00000424}, {"ua", "", 0x00000422},
};

std::uint16_t LanguageOf(const Layout &layout)
{
    return static_cast<std::uint16_t>(layout.id);
}

const Layout *FindLayout(const XkbName &name, const std::string &locale)
{
    const auto exact = layouts::FindByXkb(name.layout, name.variant);
    const auto spoken = std::find_if(exact.begin(), exact.end(), [&](const Layout *layout) {
        return IsLocaleOf(locale, LanguageOf(*layout));
    });
    if (spoken != exact.end())
        return *spoken;
    for (const Preference &preference : kPreferences) {
        if (preference.layout == name.layout && preference.variant == name.variant)
            return layouts::Find(preference.id);
    }
    return exact.empty() ? nullptr : exact.front();
}

void Note(const std::string &line)
{
    std::cerr << "pba_admin: note: " << base::Printable(line) << '\n';
}

// Never without one.
std::vector<const Layout *> FindLayouts(const SystemSetup &setup)
{
    std::vector<const Layout *> found;
    for (const XkbName &name : setup.keyboard) {
        const Layout *layout = FindLayout(name, setup.locale);
        const std::string given =
            setup.source + ": " + name.layout + (name.variant.empty() ? "" : " (" + name.variant + ")");
        if (!layout && !name.variant.empty() && (layout = FindLayout({name.layout, ""}, setup.locale)))
            Note(given + " has no identifier; " + layout->name + " is near, try it");
        else if (!layout)
            Note(given + " has no identifier and is left out");
        if (layout && std::find(found.begin(), found.end(), layout) == found.end())
            found.push_back(layout);
    }
    if (found.empty()) {
        found.push_back(layouts::Find(kUnitedStates));
        Note("no keyboard layout found; the United States' is taken");
    }
    // The people's own language comes first.
    std::stable_partition(found.begin(), found.end(), [&](const Layout *layout) {
        return IsLocaleOf(setup.locale, LanguageOf(*layout));
    });
    return found;
}

pba::InputLanguage &LanguageFor(const Layout &layout, std::vector<pba::InputLanguage> *languages)
{
    const std::uint16_t id = LanguageOf(layout);
    const auto known = std::find_if(languages->begin(), languages->end(),
                                    [id](const pba::InputLanguage &one) { return one.languageId == id; });
    if (known != languages->end())
        return *known;
    return languages->emplace_back(pba::InputLanguage{id, base::ToUtf16(LanguageName(id)), {}});
}

pba::ConstantSettingsRecord MakeRecord(const SystemSetup &setup)
{
    pba::ConstantSettingsRecord record = DefaultSettings();
    if (setup.hostName.empty())
        Note(std::string("no host name found; \"") + kNoHostName + "\" is taken");
    record.hostName = base::ToUtf16(setup.hostName.empty() ? kNoHostName : setup.hostName);
    for (const Layout *layout : FindLayouts(setup)) {
        LanguageFor(*layout, &record.prebootSettings.inputLanguages)
            .layouts.push_back({layout->id, base::ToUtf16(layout->name), {}});
    }
    return record;
}

} // namespace

void DetectSettings(const SettingsOptions &options)
{
    if (!options.output.empty() && std::filesystem::exists(options.output))
        throw Failure(options.output + ": exists already; name a new file");
    const std::string json = WriteSettings(MakeRecord(ReadSystemSetup(options.root)));
    if (options.output.empty()) {
        std::cout << json;
        return;
    }
    ScratchFile file(options.output);
    file.Write(json);
    file.FinishNew();
}

} // namespace admin
