// pba_admin: prepares volumes, users and settings for the view's host.
#include <iostream>

#include <CLI/CLI.hpp>

#include "commands.h"
#include "failure.h"
#include "volume/text.h"

namespace {

using namespace admin;

constexpr char kFooter[] = R"(
Exit codes: 0 done, 1 failed, 2 wrong usage. Nothing is left half written.
Passwords are asked at the terminal, or with --password-stdin taken from lines of standard input:
first the one that authorises, where one is needed, then the new one.)";

constexpr std::uint32_t kMaxIterTime = 10 * 60 * 1000;

// Owns what the options are parsed into.
struct Arguments
{
    UserOptions user;
    std::string size;
    std::string input;
    std::string output;
};

std::string CheckNotEmpty(const std::string &value)
{
    return value.empty() ? "must not be empty" : "";
}

CLI::App *AddCommand(CLI::App *group, const char *name, const char *description, const char *example)
{
    CLI::App *command = group->add_subcommand(name, description);
    command->footer(std::string("\nExample:\n  ") + example);
    return command;
}

void AddUserOptions(CLI::App *command, UserOptions *options)
{
    command->add_option("--domain", options->name.domain, "Domain of the user (default: none)");
    command
        ->add_option("--iter-time", options->iterTime,
                     "Time that a login takes on this computer, in milliseconds")
        ->check(CLI::Range(1u, kMaxIterTime));
    command->add_flag("--password-stdin", options->passwordFromStandardInput,
                      "Passwords from standard input");
}

void AddVolumeCommands(CLI::App *app, Arguments *arguments)
{
    CLI::App *volume = app->add_subcommand("volume", "LUKS2 volumes")->require_subcommand(1);
    CLI::App *create = AddCommand(volume, "create", "Make a volume in a new file, with its first user",
                                  "pba_admin volume create disk.img --size 64M --user anna");
    create->add_option("FILE", arguments->user.volume, "The file to make")->required()->check(CheckNotEmpty);
    create->add_option("--size", arguments->size, "Size with K, M or G, at least 17M")->required();
    create->add_option("--user", arguments->user.name.user, "Name of the user")->required();
    AddUserOptions(create, &arguments->user);
    create->final_callback([arguments] { CreateVolume(arguments->user, arguments->size); });
}

void AddUserCommands(CLI::App *app, Arguments *arguments)
{
    CLI::App *user = app->add_subcommand("user", "Users of a volume")->require_subcommand(1);
    CLI::App *add =
        AddCommand(user, "add", "Add a user to a LUKS2 volume; a password of the volume authorises",
                   "pba_admin user add --volume disk.img --domain OFFICE boris");
    add->add_option("--volume", arguments->user.volume, "LUKS2 volume, a device or a file")
        ->required()
        ->check(CheckNotEmpty);
    add->add_option("NAME", arguments->user.name.user, "Name of the user")->required();
    AddUserOptions(add, &arguments->user);
    add->final_callback([arguments] { AddUser(arguments->user); });
}

void AddSettingsCommands(CLI::App *app, Arguments *arguments)
{
    CLI::App *settings = app->add_subcommand("settings", "Settings of the view")->require_subcommand(1);
    CLI::App *compile =
        AddCommand(settings, "compile", "Turn settings from JSON into the view's settings.bin",
                   "pba_admin settings compile settings.json /pba/settings.bin");
    compile->add_option("IN", arguments->input, "Settings in JSON")->required()->check(CheckNotEmpty);
    compile->add_option("OUT", arguments->output, "The binary file, replaced when it exists")
        ->required()
        ->check(CheckNotEmpty);
    compile->final_callback([arguments] { CompileSettings(arguments->input, arguments->output); });
}

int Report(const std::vector<std::string> &lines, int exitCode)
{
    for (const std::string &line : lines)
        std::cerr << "pba_admin: " << volume::Printable(line) << '\n';
    return exitCode;
}

int Main(int argc, char **argv)
{
    Arguments arguments;
    CLI::App app("Prepares volumes, users and settings for pre-boot authentication.", "pba_admin");
    app.set_version_flag("--version", "pba_admin " PBA_VERSION);
    app.set_help_flag("--help", "Print this help and exit");
    app.require_subcommand(1);
    app.footer(kFooter);
    AddVolumeCommands(&app, &arguments);
    AddUserCommands(&app, &arguments);
    AddSettingsCommands(&app, &arguments);
    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::Success &request) {
        return app.exit(request);
    } catch (const CLI::ParseError &fault) {
        throw Failure(std::string(fault.what()) + "; see pba_admin --help", kExitUsage);
    }
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return Main(argc, argv);
    } catch (const Failure &failure) {
        return Report(failure.Lines(), failure.ExitCode());
    } catch (const std::exception &fault) {
        return Report({fault.what()}, kExitFailed);
    }
}
