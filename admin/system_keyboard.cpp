// SPDX-License-Identifier: Apache-2.0
#include "admin/system_keyboard.h"

#include <array>
#include <fstream>
#include <map>
#include <sstream>

#include <unistd.h>

namespace admin {
namespace {

using Assignments = std::map<std::string, std::string>;

// What the console's keymaps are called as keyboard layouts.
constexpr char kConsoleKeymaps[] = "/usr/share/systemd/kbd-model-map";

std::string Trimmed(const std::string &text)
{
    constexpr char kBlanks[] = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Lines as of a shell: NAME=VALUE or NAME="VALUE".
Assignments ReadAssignments(const std::string &path)
{
    Assignments assignments;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        line = Trimmed(line);
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos || line.front() == '#')
            continue;
        std::string value = Trimmed(line.substr(equals + 1));
        if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
            value.back() == value.front())
            value = value.substr(1, value.size() - 2);
        assignments[line.substr(0, equals)] = value;
    }
    return assignments;
}

// "us,de" with the variants ",nodeadkeys" are two.
std::vector<XkbName> Split(const std::string &layouts, const std::string &variants)
{
    std::vector<XkbName> names;
    std::istringstream layoutList(layouts);
    std::istringstream variantList(variants);
    for (std::string layout, variant; std::getline(layoutList, layout, ',');) {
        if (!std::getline(variantList, variant, ','))
            variant.clear();
        if (!Trimmed(layout).empty())
            names.push_back({Trimmed(layout), Trimmed(variant)});
    }
    return names;
}

std::vector<XkbName> OfConsoleKeymap(const std::string &root, const std::string &keymap)
{
    for (const std::string &path : {root + kConsoleKeymaps, std::string(kConsoleKeymaps)}) {
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);) {
            std::istringstream fields(line);
            std::string name, layout, model, variant;
            if (fields >> name >> layout >> model >> variant && name == keymap)
                return Split(layout, variant == "-" ? "" : variant);
        }
    }
    // Most are called after the layout: "fr", "fr-latin9".
    return Split(keymap.substr(0, keymap.find('-')), "");
}

std::string FirstLine(const std::string &path)
{
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return Trimmed(line);
}

std::string HostName(const std::string &root)
{
    std::string name = FirstLine(root + "/etc/hostname");
    std::array<char, 256> running{};
    if (name.empty() && root == "/" && gethostname(running.data(), running.size() - 1) == 0)
        name = running.data();
    return name;
}

std::string Locale(const std::string &root)
{
    for (const char *path : {"/etc/locale.conf", "/etc/default/locale"}) {
        Assignments assignments = ReadAssignments(root + path);
        if (!assignments["LANG"].empty())
            return assignments["LANG"];
    }
    return {};
}

} // namespace

SystemSetup ReadSystemSetup(const std::string &root)
{
    SystemSetup setup{HostName(root), Locale(root), {}, {}};
    for (const char *path : {"/etc/default/keyboard", "/etc/vconsole.conf"}) {
        Assignments assignments = ReadAssignments(root + path);
        setup.keyboard = Split(assignments["XKBLAYOUT"], assignments["XKBVARIANT"]);
        if (setup.keyboard.empty() && !assignments["KEYMAP"].empty())
            setup.keyboard = OfConsoleKeymap(root, assignments["KEYMAP"]);
        if (!setup.keyboard.empty()) {
            setup.source = path;
            break;
        }
    }
    return setup;
}

} // namespace admin
