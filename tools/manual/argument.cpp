// SPDX-License-Identifier: Apache-2.0
#include "tools/manual/argument.h"

#include <sstream>

#include <CLI/CLI.hpp>

namespace manual {
namespace {

std::string PlainName(const std::string &type)
{
    return type == "UINT" || type == "INT" ? "NUMBER" : type;
}

std::vector<const CLI::Option *> Shown(const CLI::App &app, bool positional)
{
    return app.get_options([positional](const CLI::Option *option) {
        return !option->get_group().empty() && option->get_positional() == positional;
    });
}

} // namespace

std::vector<std::string> Split(const std::string &text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

// The library writes what is checked behind the type: TEXT:DIR, :{yes,no}, UINT:UINT in [1 - 127].
Argument ArgumentOf(const CLI::Option &option)
{
    Argument argument;
    if (option.get_items_expected_max() == 0)
        return argument;
    for (const std::string &part : Split(option.get_type_name(), ':')) {
        const std::size_t range = part.find(" in [");
        if (part.starts_with('{'))
            argument.choices = Split(part.substr(1, part.size() - 2), ',');
        else if (range != std::string::npos)
            argument.range = part.substr(range + 5, part.size() - range - 6);
        else if (!part.empty())
            argument.name = PlainName(part);
    }
    return argument;
}

std::vector<const CLI::Option *> OptionsOf(const CLI::App &app)
{
    return Shown(app, false);
}

std::vector<const CLI::Option *> PositionalsOf(const CLI::App &app)
{
    return Shown(app, true);
}

std::vector<const CLI::App *> CommandsOf(const CLI::App &app)
{
    return app.get_subcommands([](const CLI::App *command) { return !command->get_group().empty(); });
}

std::string NameOf(const CLI::Option &option)
{
    return option.get_name(false, true);
}

} // namespace manual
