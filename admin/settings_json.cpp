// SPDX-License-Identifier: Apache-2.0
#include "admin/settings_json.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <set>

#include <nlohmann/json.hpp>

#include "admin/hotkey_text.h"
#include "settings_format/hotkey_predicates.h"
#include "base/text.h"

namespace admin {
namespace {

using nlohmann::json;

constexpr pba::Hotkey kLanguageSwitch{pba::kModifierAlt, 0x10};
constexpr pba::Hotkey kLayoutSwitch{pba::kModifierCtrl, 0x10};
constexpr pba::Hotkey kCapsLockTurnOff{0, 0x14};
constexpr std::size_t kLayoutIdDigits = 8;

std::optional<std::uint32_t> ParseHex(std::string_view digits)
{
    std::uint32_t number = 0;
    const char *last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, number, 16);
    return error == std::errc() && end == last ? std::optional(number) : std::nullopt;
}

// One object or list of the JSON text, and its place in it.
class Node
{
public:
    Node(const json &value, std::string place, std::vector<std::string> *faults)
        : m_value(value)
        , m_place(std::move(place))
        , m_faults(faults)
    {
    }

    void Fault(const std::string &what) const
    {
        m_faults->push_back((m_place.empty() ? "the whole file" : m_place) + ": " + what);
    }

    bool IsObjectOf(std::initializer_list<const char *> names) const;
    std::optional<Node> Member(const char *name) const;
    std::optional<Node> RequiredMember(const char *name) const;
    std::vector<Node> Elements() const;

    std::u16string Text() const;
    std::uint16_t LanguageId() const;
    std::uint32_t LayoutId() const;
    pba::Hotkey Hotkey() const;

private:
    const json &m_value;
    std::string m_place;
    std::vector<std::string> *m_faults;
};

// A name that is not known is a fault: a mistyped one must not pass in silence.
bool Node::IsObjectOf(std::initializer_list<const char *> names) const
{
    if (!m_value.is_object()) {
        Fault("must be an object");
        return false;
    }
    for (const auto &[name, value] : m_value.items()) {
        if (std::find(names.begin(), names.end(), name) == names.end())
            Node(value, m_place.empty() ? name : m_place + "." + name, m_faults).Fault("unknown member");
    }
    return true;
}

std::optional<Node> Node::Member(const char *name) const
{
    const auto member = m_value.find(name);
    if (member == m_value.end())
        return std::nullopt;
    return Node(*member, m_place.empty() ? name : m_place + "." + name, m_faults);
}

std::optional<Node> Node::RequiredMember(const char *name) const
{
    std::optional<Node> member = Member(name);
    if (!member)
        Fault(std::string("lacks \"") + name + "\"");
    return member;
}

std::vector<Node> Node::Elements() const
{
    std::vector<Node> elements;
    if (!m_value.is_array() || m_value.empty()) {
        Fault("must be a list with at least one element");
        return elements;
    }
    for (std::size_t i = 0; i < m_value.size(); ++i)
        elements.emplace_back(m_value[i], m_place + "[" + std::to_string(i) + "]", m_faults);
    return elements;
}

std::u16string Node::Text() const
{
    if (m_value.is_string() && !m_value.get_ref<const std::string &>().empty())
        return base::ToUtf16(m_value.get_ref<const std::string &>());
    Fault("must be text that is not empty");
    return {};
}

std::uint16_t Node::LanguageId() const
{
    std::optional<std::uint64_t> number;
    if (m_value.is_number_unsigned())
        number = m_value.get<std::uint64_t>();
    else if (m_value.is_string() && m_value.get_ref<const std::string &>().starts_with("0x"))
        number = ParseHex(std::string_view(m_value.get_ref<const std::string &>()).substr(2));
    if (number && *number > 0 && *number <= 0xFFFF)
        return static_cast<std::uint16_t>(*number);
    Fault("must be a number such as 1033, or text such as \"0x0409\"");
    return 0;
}

std::uint32_t Node::LayoutId() const
{
    if (m_value.is_string() && m_value.get_ref<const std::string &>().size() == kLayoutIdDigits) {
        if (const std::optional<std::uint32_t> number = ParseHex(m_value.get_ref<const std::string &>()))
            return *number;
    }
    Fault("must be text of 8 hexadecimal digits, such as \"00000409\"");
    return 0;
}

pba::Hotkey Node::Hotkey() const
{
    std::optional<pba::Hotkey> hotkey;
    if (m_value.is_string())
        hotkey = ParseHotkey(m_value.get_ref<const std::string &>());
    if (!hotkey)
        Fault("must be a hot key such as \"Alt+Shift\", \"Ctrl+1\" or \"none\"");
    else if (!fde::boot::IsHotkeyAccepted(*hotkey))
        Fault("a hot key that ends in a modifier may have at most one modifier before it");
    return hotkey.value_or(pba::Hotkey());
}

pba::Hotkey HotkeyMember(const Node &node, const char *name, const pba::Hotkey &otherwise)
{
    const std::optional<Node> member = node.Member(name);
    return member ? member->Hotkey() : otherwise;
}

pba::KeyboardLayout ReadLayout(const Node &node)
{
    pba::KeyboardLayout layout;
    if (!node.IsObjectOf({"layoutId", "name", "selectHotkey"}))
        return layout;
    if (const auto member = node.RequiredMember("layoutId"))
        layout.layoutId = member->LayoutId();
    if (const auto member = node.RequiredMember("name"))
        layout.name = member->Text();
    layout.selectHotkey = HotkeyMember(node, "selectHotkey", {});
    return layout;
}

pba::InputLanguage ReadLanguage(const Node &node)
{
    pba::InputLanguage language;
    if (!node.IsObjectOf({"languageId", "name", "layouts"}))
        return language;
    if (const auto member = node.RequiredMember("languageId"))
        language.languageId = member->LanguageId();
    if (const auto member = node.RequiredMember("name"))
        language.name = member->Text();
    if (const auto member = node.RequiredMember("layouts")) {
        for (const Node &layout : member->Elements())
            language.layouts.push_back(ReadLayout(layout));
    }
    return language;
}

pba::ConstantSettingsRecord ReadRecord(const Node &node)
{
    pba::ConstantSettingsRecord record = DefaultSettings();
    if (!node.IsObjectOf({"hostName", "inputLanguages", "languageSwitchHotkey", "keyboardLayoutSwitchHotkey",
                          "capsLockTurnOffHotkey"}))
        return record;
    pba::PrebootSettings &settings = record.prebootSettings;
    if (const auto member = node.RequiredMember("hostName"))
        record.hostName = member->Text();
    if (const auto member = node.RequiredMember("inputLanguages")) {
        for (const Node &language : member->Elements())
            settings.inputLanguages.push_back(ReadLanguage(language));
    }
    settings.languageSwitchHotkey = HotkeyMember(node, "languageSwitchHotkey", settings.languageSwitchHotkey);
    settings.keyboardLayoutSwitchHotkey =
        HotkeyMember(node, "keyboardLayoutSwitchHotkey", settings.keyboardLayoutSwitchHotkey);
    settings.capsLockTurnOffHotkey =
        HotkeyMember(node, "capsLockTurnOffHotkey", settings.capsLockTurnOffHotkey);
    return record;
}

// The JSON library keeps the last of two members of one name.
class DuplicateFinder
{
public:
    explicit DuplicateFinder(std::vector<std::string> *faults)
        : m_faults(faults)
    {
    }

    bool operator()(int, json::parse_event_t event, json &value)
    {
        if (event == json::parse_event_t::object_start)
            m_names.emplace_back();
        else if (event == json::parse_event_t::object_end)
            m_names.pop_back();
        else if (event == json::parse_event_t::key && !m_names.back().insert(value.get<std::string>()).second)
            m_faults->push_back(value.get<std::string>() + ": stands twice in one object");
        return true;
    }

private:
    std::vector<std::string> *m_faults;
    std::vector<std::set<std::string>> m_names;
};

std::string DescribePlace(const std::string &text, std::size_t byte)
{
    const std::string_view before = std::string_view(text).substr(0, byte > 0 ? byte - 1 : 0);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1; // npos + 1 is 0
    return "line " + std::to_string(line) + ", column " + std::to_string(before.size() - lineStart + 1);
}

} // namespace

pba::ConstantSettingsRecord DefaultSettings()
{
    pba::ConstantSettingsRecord record;
    record.prebootSettings.languageSwitchHotkey = kLanguageSwitch;
    record.prebootSettings.keyboardLayoutSwitchHotkey = kLayoutSwitch;
    record.prebootSettings.capsLockTurnOffHotkey = kCapsLockTurnOff;
    return record;
}

std::optional<pba::ConstantSettingsRecord> ReadSettings(const std::string &text,
                                                        std::vector<std::string> *faults)
{
    json value;
    try {
        value = json::parse(text, DuplicateFinder(faults));
    } catch (const json::parse_error &fault) {
        faults->push_back(DescribePlace(text, fault.byte) + ": not valid JSON");
        return std::nullopt;
    }
    pba::ConstantSettingsRecord record = ReadRecord(Node(value, {}, faults));
    return faults->empty() ? std::optional(std::move(record)) : std::nullopt;
}

} // namespace admin
