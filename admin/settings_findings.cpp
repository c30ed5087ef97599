// SPDX-License-Identifier: Apache-2.0
#include "admin/settings_findings.h"

#include <algorithm>
#include <cstdio>

#include "admin/hotkey_text.h"
#include "base/text.h"
#include "platform/layouts/layout_table.h"
#include "settings_format/hotkey_predicates.h"

namespace admin {
namespace {

// More would not be read.
constexpr std::size_t kMaxSuggestions = 5;

// An identifier as the JSON has it.
std::string Digits(std::uint32_t layoutId)
{
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08x", layoutId);
    return digits;
}

std::string Suggestions(std::uint32_t layoutId)
{
    const auto same = layouts::OfSameLanguage(layoutId);
    std::string text;
    for (std::size_t i = 0; i < std::min(same.size(), kMaxSuggestions); ++i)
        text += (i == 0 ? "; known for its language: " : ", ") + Digits(same[i]->id) + " " + same[i]->name;
    return text;
}

class Finder
{
public:
    explicit Finder(std::vector<Finding> *findings)
        : m_findings(*findings)
    {
    }

    void Look(const pba::ConstantSettingsRecord &record);

private:
    void Fault(const std::string &place, const std::string &what)
    {
        m_findings.push_back({true, place, what});
    }
    void Warn(const std::string &place, const std::string &what)
    {
        m_findings.push_back({false, place, what});
    }

    void LookAtName(const std::u16string &name, const std::string &place);
    void LookAtLanguage(const pba::InputLanguage &language, const std::string &place);
    void LookAtLayout(const pba::KeyboardLayout &layout, const std::string &place);
    void LookAtHotkey(const pba::Hotkey &hotkey, const std::string &place);

    struct Taken
    {
        pba::Hotkey hotkey;
        std::string place;
    };

    std::vector<Finding> &m_findings;
    std::vector<Taken> m_taken;
};

void Finder::Look(const pba::ConstantSettingsRecord &record)
{
    const pba::PrebootSettings &settings = record.prebootSettings;
    LookAtName(record.hostName, "hostName");
    LookAtHotkey(settings.languageSwitchHotkey, "languageSwitchHotkey");
    LookAtHotkey(settings.keyboardLayoutSwitchHotkey, "keyboardLayoutSwitchHotkey");
    LookAtHotkey(settings.capsLockTurnOffHotkey, "capsLockTurnOffHotkey");
    if (settings.inputLanguages.empty())
        Fault("inputLanguages", "must be a list with at least one element");
    for (std::size_t i = 0; i < settings.inputLanguages.size(); ++i)
        LookAtLanguage(settings.inputLanguages[i], "inputLanguages[" + std::to_string(i) + "]");
}

void Finder::LookAtName(const std::u16string &name, const std::string &place)
{
    if (name.empty())
        Warn(place, "is empty");
    else if (!base::IsPlain(base::ToUtf8(name)))
        Warn(place, "has a character that does not show");
}

void Finder::LookAtLanguage(const pba::InputLanguage &language, const std::string &place)
{
    LookAtName(language.name, place + ".name");
    if (language.layouts.empty())
        Fault(place + ".layouts", "must be a list with at least one element");
    for (std::size_t i = 0; i < language.layouts.size(); ++i)
        LookAtLayout(language.layouts[i], place + ".layouts[" + std::to_string(i) + "]");
}

void Finder::LookAtLayout(const pba::KeyboardLayout &layout, const std::string &place)
{
    if (!layouts::Find(layout.layoutId))
        Warn(place + ".layoutId", Digits(layout.layoutId) +
                                      " is not known: who chooses it goes on typing by the layout before" +
                                      Suggestions(layout.layoutId));
    LookAtName(layout.name, place + ".name");
    LookAtHotkey(layout.selectHotkey, place + ".selectHotkey");
}

void Finder::LookAtHotkey(const pba::Hotkey &hotkey, const std::string &place)
{
    if (!fde::boot::IsHotkeyAccepted(hotkey))
        Fault(place, "a hot key that ends in a modifier may have at most one modifier before it");
    if (hotkey.key == 0)
        return;
    const bool isTyped = hotkey.key == ' ' || (hotkey.key >= '0' && hotkey.key <= '9') ||
                         (hotkey.key >= 'A' && hotkey.key <= 'Z');
    if (isTyped && (hotkey.modifiers & ~pba::kModifierShift) == 0)
        Warn(place, FormatHotkey(hotkey) + " cannot be typed any more, in passwords neither");
    const auto taken =
        std::find_if(m_taken.begin(), m_taken.end(), [&](const Taken &one) { return one.hotkey == hotkey; });
    if (taken != m_taken.end())
        Warn(place, FormatHotkey(hotkey) + " is " + taken->place + " already");
    else
        m_taken.push_back({hotkey, place});
}

} // namespace

void FindInRecord(const pba::ConstantSettingsRecord &record, std::vector<Finding> *findings)
{
    Finder(findings).Look(record);
}

} // namespace admin
