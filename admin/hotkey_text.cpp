// SPDX-License-Identifier: Apache-2.0
#include "admin/hotkey_text.h"

#include <charconv>
#include <cstdio>

namespace admin {
namespace {

struct NamedKey
{
    std::string_view name;
    std::uint16_t key;
    std::uint16_t modifier; // 0 for a key that is none
};

constexpr NamedKey kNamedKeys[] = {
    {"Alt", 0x12, pba::kModifierAlt},
    {"Ctrl", 0x11, pba::kModifierCtrl},
    {"Shift", 0x10, pba::kModifierShift},
    {"Win", 0x5B, pba::kModifierWin},
    {"CapsLock", 0x14, 0},
    {"Space", 0x20, 0},
};

constexpr std::uint16_t kFirstFunctionKey = 0x70;
constexpr unsigned kFunctionKeys = 24;

const NamedKey *FindNamedKey(std::string_view name)
{
    for (const NamedKey &key : kNamedKeys) {
        if (key.name == name)
            return &key;
    }
    return nullptr;
}

std::optional<unsigned> ParseNumber(std::string_view digits, int base, unsigned maximum)
{
    unsigned number = 0;
    const char *last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, number, base);
    if (error != std::errc() || end != last || number == 0 || number > maximum)
        return std::nullopt;
    return number;
}

std::optional<std::uint16_t> ParseKey(std::string_view name)
{
    if (const NamedKey *named = FindNamedKey(name))
        return named->key;
    const char first = name.empty() ? '\0' : name.front();
    if (name.size() == 1 && ((first >= '0' && first <= '9') || (first >= 'A' && first <= 'Z')))
        return static_cast<std::uint16_t>(first);
    std::optional<unsigned> number;
    if (name.starts_with("0x"))
        number = ParseNumber(name.substr(2), 16, 0xFFFF);
    else if (first == 'F' && (number = ParseNumber(name.substr(1), 10, kFunctionKeys)))
        number = kFirstFunctionKey + *number - 1;
    return number ? std::optional(static_cast<std::uint16_t>(*number)) : std::nullopt;
}

std::string FormatKey(std::uint16_t key)
{
    for (const NamedKey &named : kNamedKeys) {
        if (named.key == key)
            return std::string(named.name);
    }
    if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z'))
        return std::string(1, static_cast<char>(key));
    if (key >= kFirstFunctionKey && key < kFirstFunctionKey + kFunctionKeys)
        return "F" + std::to_string(key - kFirstFunctionKey + 1);
    char code[8];
    std::snprintf(code, sizeof code, "0x%02X", key);
    return code;
}

} // namespace

std::string FormatHotkey(const pba::Hotkey &hotkey)
{
    if (hotkey.key == 0)
        return "none";
    std::string text;
    for (const NamedKey &named : kNamedKeys) {
        if (hotkey.modifiers & named.modifier)
            text += std::string(named.name) + "+";
    }
    return text + FormatKey(hotkey.key);
}

std::optional<pba::Hotkey> ParseHotkey(std::string_view text)
{
    pba::Hotkey hotkey;
    if (text == "none")
        return hotkey;
    for (std::size_t plus = text.find('+'); plus != std::string_view::npos; plus = text.find('+')) {
        const NamedKey *modifier = FindNamedKey(text.substr(0, plus));
        if (!modifier || modifier->modifier == 0 || (hotkey.modifiers & modifier->modifier))
            return std::nullopt;
        hotkey.modifiers |= modifier->modifier;
        text.remove_prefix(plus + 1);
    }
    const std::optional<std::uint16_t> key = ParseKey(text);
    if (!key)
        return std::nullopt;
    hotkey.key = *key;
    return hotkey;
}

} // namespace admin
