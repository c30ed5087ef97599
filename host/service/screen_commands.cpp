// SPDX-License-Identifier: Apache-2.0
#include "host/service/screen_commands.h"

#include <filesystem>

#include <unistd.h>

#include "host/screen/identity.h"
#include "pbe/log.h"

namespace host {
namespace {

// The package makes such a user; without it, whoever has no files of his own.
constexpr char kDefaultUser[] = "pba-screen";
constexpr char kNobody[] = "65534:65534";

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

} // namespace

std::string FindScreenUser(const std::string &chosen, std::string *fault)
{
    const bool root = geteuid() == 0;
    if (!root && !chosen.empty())
        *fault = "--screen-user: only root can start the screen as another user";
    if (!root)
        return {};
    std::optional<Identity> identity = FindIdentity(chosen.empty() ? kDefaultUser : chosen);
    if (!identity && chosen.empty())
        identity = FindIdentity(kNobody);
    if (!identity)
        *fault = "--screen-user " + chosen + ": not known, or root's in part; name an ordinary user";
    return identity ? InNumbers(*identity) : std::string();
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
