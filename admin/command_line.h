// SPDX-License-Identifier: Apache-2.0
// What the groups of commands are put together from. Each group lives in a file of its own.
#pragma once

#include <CLI/CLI.hpp>

namespace admin {

struct PolicyOptions;
struct RecoveryOptions;
struct SettingsOptions;
struct TokenOptions;
struct UserOptions;
struct VolumeOptions;

// The options are parsed into `options`, which must outlive the parsing.
void AddVolumeCommands(CLI::App *app, VolumeOptions *options);
void AddUserCommands(CLI::App *app, UserOptions *options);
void AddPolicyCommands(CLI::App *app, PolicyOptions *options);
void AddSettingsCommands(CLI::App *app, SettingsOptions *options);
void AddRecoveryCommands(CLI::App *app, RecoveryOptions *options);
void AddTokenCommands(CLI::App *app, TokenOptions *options);

// `example` is a line as typed at a shell.
CLI::App *AddCommand(CLI::App *group, const char *name, const char *description, const char *example);
// What is wrong with a command line, and where to read more.
std::string Explain(const CLI::App &app, const CLI::ParseError &fault);
// An empty value is often a script's unset variable.
std::string CheckNotEmpty(const std::string &value);
// `type` is what help and completion take the path for: FILE or DIR. It may not be empty.
CLI::Option *AddPath(CLI::App *command, const char *name, std::string *path, const char *description,
                     const char *type = "FILE");
// The option --volume, or a positional argument.
CLI::Option *AddVolume(CLI::App *command, std::string *path, const char *name = "--volume");
CLI::Option *AddJson(CLI::App *command, bool *json);

} // namespace admin
