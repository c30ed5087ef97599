// SPDX-License-Identifier: Apache-2.0
// The command line of pba_admin settings.
#include "admin/command_line.h"
#include "admin/settings.h"

namespace admin {
namespace {

void AddCompile(CLI::App *settings, SettingsOptions *options)
{
    CLI::App *command =
        AddCommand(settings, "compile", "Turn settings from JSON into the view's settings.bin",
                   "pba_admin settings compile settings.json /pba/settings.bin");
    AddPath(command, "IN", &options->input, "Settings in JSON")->required();
    AddPath(command, "OUT", &options->output, "The binary file, replaced when it exists")->required();
    command->final_callback([options] { CompileSettings(*options); });
}

CLI::App *AddReading(CLI::App *settings, SettingsOptions *options, const char *name, const char *description,
                     const char *example)
{
    CLI::App *command = AddCommand(settings, name, description, example);
    AddPath(command, "FILE", &options->input, "Settings, in JSON or compiled")->required();
    return command;
}

void AddInit(CLI::App *settings, SettingsOptions *options)
{
    CLI::App *command = AddCommand(settings, "init", "Write settings to begin with, in JSON",
                                   "pba_admin settings init --detect settings.json");
    command
        ->add_flag("--detect", options->detect,
                   "Take host name, languages and keyboard layouts from this system's own configuration")
        ->required();
    command->add_option("--root", options->root, "The system to look at (default: /)")
        ->check(CLI::ExistingDirectory);
    AddPath(command, "OUT", &options->output, "A new file (default: standard output)");
    command->final_callback([options] { DetectSettings(*options); });
}

} // namespace

void AddSettingsCommands(CLI::App *app, SettingsOptions *options)
{
    CLI::App *settings = app->add_subcommand("settings", "Settings of the view")->require_subcommand(1);
    AddCompile(settings, options);
    CLI::App *show =
        AddReading(settings, options, "show", "Show settings", "pba_admin settings show /pba/settings.bin");
    show->add_flag("--json", options->json, "As JSON that can be compiled");
    show->final_callback([options] { ShowSettings(*options); });
    CLI::App *check = AddReading(
        settings, options, "check",
        "Check settings: 0 when the view takes them, with or without warnings, 1 when it would not",
        "pba_admin settings check settings.json");
    check->add_flag("--json", options->json, "The findings as a list in JSON on standard output");
    check->final_callback([options] { CheckSettings(*options); });
    AddInit(settings, options);
}

} // namespace admin
