#include "admin/command_line.h"

namespace admin {

CLI::App *AddCommand(CLI::App *group, const char *name, const char *description, const char *example)
{
    CLI::App *command = group->add_subcommand(name, description);
    command->footer(std::string("\nExample:\n  ") + example);
    return command;
}

std::string CheckNotEmpty(const std::string &value)
{
    return value.empty() ? "must not be empty" : "";
}

} // namespace admin
