// SPDX-License-Identifier: Apache-2.0
// pba_admin: prepares volumes, users, tokens, settings and recovery for the view's host.
#include <cstdio>
#include <iostream>
#include <new>

#include "admin/command_line.h"
#include "admin/commands.h"
#include "admin/failure.h"
#include "admin/recovery.h"
#include "admin/settings.h"
#include "admin/token.h"
#include "base/process_protection.h"
#include "base/text.h"

namespace {

using namespace admin;

constexpr char kFooter[] = R"(
Exit codes: 0 done, 1 failed, 2 wrong usage. Nothing is left half written.
Passwords are asked at the terminal, or with --password-stdin taken from lines of standard input:
first the one that authorises, where one is needed, then the new one.)";

// Owns what the options are parsed into.
struct Arguments
{
    VolumeOptions volume;
    UserOptions user;
    PolicyOptions policy;
    RecoveryOptions recovery;
    SettingsOptions settings;
    TokenOptions token;
};

int Report(const std::vector<std::string> &lines, int exitCode)
{
    for (const std::string &line : lines)
        std::cerr << "pba_admin: " << base::Printable(line) << '\n';
    return exitCode;
}

int Main(int argc, char **argv)
{
    Arguments arguments;
    CLI::App app("Prepares volumes, users, tokens, settings and recovery for pre-boot authentication.",
                 "pba_admin");
    app.set_version_flag("--version", "pba_admin " PBA_VERSION);
    app.set_help_flag("--help", "Print this help and exit");
    app.require_subcommand(1);
    app.footer(kFooter);
    AddVolumeCommands(&app, &arguments.volume);
    AddUserCommands(&app, &arguments.user);
    AddPolicyCommands(&app, &arguments.policy);
    AddSettingsCommands(&app, &arguments.settings);
    AddRecoveryCommands(&app, &arguments.recovery);
    AddTokenCommands(&app, &arguments.token);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success &request) {
        app.exit(request);
    } catch (const CLI::ParseError &fault) {
        throw Failure(Explain(app, fault), kExitUsage);
    }
    if (!std::cout.flush())
        throw Failure("standard output: cannot be written");
    return 0;
}

int RunCommand(int argc, char **argv)
{
    try {
        return Main(argc, argv);
    } catch (const Failure &failure) {
        return Report(failure.Lines(), failure.ExitCode());
    }
}

} // namespace

int main(int argc, char **argv)
{
    base::ProtectProcess();
    try {
        return RunCommand(argc, argv);
    } catch (const std::bad_alloc &) { // also from telling another failure
        std::fputs("pba_admin: not enough memory\n", stderr);
        return kExitFailed;
    } catch (const std::exception &fault) {
        return Report({std::string("internal fault, please report it: ") + fault.what()}, kExitFailed);
    }
}
