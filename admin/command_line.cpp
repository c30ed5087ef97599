// SPDX-License-Identifier: Apache-2.0
#include "admin/command_line.h"

namespace admin {

CLI::App *AddCommand(CLI::App *group, const char *name, const char *description, const char *example)
{
    CLI::App *command = group->add_subcommand(name, description);
    command->footer(std::string("\nExample:\n  ") + example);
    return command;
}

// The library says that a command is missing, also where it has met one that it does not know.
std::string Explain(const CLI::App &app, const CLI::ParseError &fault)
{
    const CLI::App *group = &app;
    std::string name = app.get_name();
    while (!group->get_subcommands().empty()) {
        group = group->get_subcommands().front();
        name += ' ' + group->get_name();
    }
    const std::vector<std::string> rest = group->remaining();
    std::string what = fault.what();
    if (group->get_require_subcommand_min() > 0 && !rest.empty())
        what = (rest[0].starts_with('-') ? "unknown option: " : "unknown command: ") + name + ' ' + rest[0];
    return what + "; see " + name + " --help";
}

std::string CheckNotEmpty(const std::string &value)
{
    return value.empty() ? "must not be empty" : "";
}

CLI::Option *AddPath(CLI::App *command, const char *name, std::string *path, const char *description,
                     const char *type)
{
    return command->add_option(name, *path, description)->type_name(type)->check(CheckNotEmpty);
}

CLI::Option *AddVolume(CLI::App *command, std::string *path, const char *name)
{
    return AddPath(command, name, path, "LUKS2 volume, a device or a file");
}

CLI::Option *AddJson(CLI::App *command, bool *json)
{
    return command->add_flag("--json", *json, "As JSON; the manual names the keys");
}

} // namespace admin
