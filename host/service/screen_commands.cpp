// SPDX-License-Identifier: Apache-2.0
#include "host/service/screen_commands.h"

#include <filesystem>

#include <unistd.h>

#include "host/screen/identity.h"
#include "pbe/log.h"

namespace host {
namespace {

// The package makes such users; without them, those who have no files of their own.
struct UserRole
{
    const char *option;
    const char *usual;
    const char *nobody;
};
constexpr UserRole kScreenUser{"--screen-user", "pba-screen", "65534:65534"};
constexpr UserRole kTokenUser{"--token-user", "pba-token", "65533:65533"};

std::string Beside(const char *program)
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).replace_filename(program);
}

std::vector<std::string> CommonArguments(const CommandLine &line, const std::string &user)
{
    std::vector<std::string> arguments{"--root", line.root};
    if (!user.empty())
        arguments.insert(arguments.end(), {"--user", user});
    if (line.landlockRequired)
        arguments.push_back("--require-landlock");
    return arguments;
}

ScreenCommand Picture(const CommandLine &line, const std::string &user)
{
    const int log = PbeGetLogDescriptor();
    ScreenCommand command{Beside("pba_screen"), CommonArguments(line, user), {log}, false};
    command.openFiles = [allowed = line.autologonAllowed] { return HandedFiles(allowed); };
    command.arguments.insert(command.arguments.end(), {"--log", std::to_string(log), "--log-severity",
                                                       std::to_string(PbeGetLogSeverity())});
    if (!line.module.empty())
        command.arguments.insert(command.arguments.end(), {"--module", line.module});
    return command;
}

std::string FindUser(const UserRole &role, const std::string &chosen, std::string *fault)
{
    const bool root = geteuid() == 0;
    if (!root && !chosen.empty())
        *fault = std::string(role.option) + ": only root can start a process as another user";
    if (!root)
        return {};
    std::optional<Identity> identity = FindIdentity(chosen.empty() ? role.usual : chosen);
    if (!identity && chosen.empty())
        identity = FindIdentity(role.nobody);
    if (!identity)
        *fault =
            std::string(role.option) + ' ' + chosen + ": not known, or root's in part; name an ordinary user";
    return identity ? InNumbers(*identity) : std::string();
}

} // namespace

std::string FindScreenUser(const std::string &chosen, std::string *fault)
{
    return FindUser(kScreenUser, chosen, fault);
}

std::string FindTokenUser(const std::string &chosen, std::string *fault)
{
    return FindUser(kTokenUser, chosen, fault);
}

TokenOptions TokenOptionsFor(const CommandLine &line, const std::string &user)
{
    TokenOptions options{Beside("pba_token"), {}, user, std::chrono::seconds(line.tokenTimeout)};
    if (!line.tokenModule.empty())
        options.modules.push_back(line.tokenModule);
    return options;
}

std::vector<ScreenCommand> ScreenCommands(const CommandLine &line, const std::string &user, bool hasTerminal)
{
    std::vector<ScreenCommand> commands;
    if (!line.text)
        commands.push_back(Picture(line, user));
    if (hasTerminal)
        commands.push_back({Beside("pba_text"), CommonArguments(line, user), {}, true});
    return commands;
}

} // namespace host
