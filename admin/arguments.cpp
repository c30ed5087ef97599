// SPDX-License-Identifier: Apache-2.0
#include "admin/arguments.h"

#include "admin/command_line.h"

namespace admin {
namespace {

constexpr char kFooter[] = R"(
Exit codes:
  0  done
  1  failed; nothing is left half written
  2  wrong usage

Passwords are asked at the terminal, or with --password-stdin taken from lines of standard input:
first the one that authorises, where one is needed, then the new one.)";

} // namespace

void Describe(CLI::App *app, Arguments *arguments)
{
    app->name("pba_admin");
    app->description("Prepares volumes, users, tokens, settings and recovery for pre-boot authentication.");
    app->set_version_flag("--version", "pba_admin " PBA_VERSION);
    app->set_help_flag("--help", "Print this help and exit");
    app->require_subcommand(1);
    app->footer(kFooter);
    AddVolumeCommands(app, &arguments->volume);
    AddUserCommands(app, &arguments->user);
    AddPolicyCommands(app, &arguments->policy);
    AddSettingsCommands(app, &arguments->settings);
    AddRecoveryCommands(app, &arguments->recovery);
    AddTokenCommands(app, &arguments->token);
}

} // namespace admin
