// SPDX-License-Identifier: Apache-2.0
// The command lines of pba_admin volume and pba_admin user.
#include "admin/command_line.h"
#include "admin/commands.h"

namespace admin {
namespace {

constexpr std::uint32_t kMaxIterTime = 10 * 60 * 1000;

void AddDomain(CLI::App *command, UserOptions *options)
{
    command->add_option("--domain", options->name.domain, "Domain of the user (default: none)");
}

void AddPasswordOptions(CLI::App *command, UserOptions *options)
{
    command->add_flag("--password-stdin", options->passwordFromStandardInput,
                      "Passwords from standard input");
}

void AddIterTime(CLI::App *command, UserOptions *options)
{
    command
        ->add_option("--iter-time", options->iterTime,
                     "Time that a login takes on this computer, in milliseconds")
        ->check(CLI::Range(1u, kMaxIterTime));
}

// A command about one user of a volume that there is.
CLI::App *AddUserCommand(CLI::App *group, const char *name, const char *description, const char *example,
                         UserOptions *options, void (*run)(const UserOptions &))
{
    CLI::App *command = AddCommand(group, name, description, example);
    AddVolume(command, &options->volume)->required();
    command->add_option("NAME", options->name.user, "Name of the user")->required();
    AddDomain(command, options);
    AddPasswordOptions(command, options);
    command->final_callback([options, run] { run(*options); });
    return command;
}

} // namespace

void AddVolumeCommands(CLI::App *app, VolumeOptions *options)
{
    CLI::App *volume = app->add_subcommand("volume", "LUKS2 volumes")->require_subcommand(1);
    CLI::App *create = AddCommand(volume, "create", "Make a volume in a new file, with its first user",
                                  "pba_admin volume create disk.img --size 64M --user anna");
    AddPath(create, "FILE", &options->user.volume, "The file to make")->required();
    create->add_option("--size", options->size, "Size with K, M or G, at least 17M")->required();
    create->add_option("--user", options->user.name.user, "Name of the user")->required();
    AddDomain(create, &options->user);
    AddIterTime(create, &options->user);
    AddPasswordOptions(create, &options->user);
    create->final_callback([options] { CreateVolume(*options); });

    CLI::App *info = AddCommand(volume, "info", "Show users, keyslots, tokens, recovery and the room left",
                                "pba_admin volume info --json disk.img");
    AddVolume(info, &options->user.volume, "VOLUME")->required();
    AddJson(info, &options->user.json);
    info->final_callback([options] { ShowVolume(*options); });
}

void AddUserCommands(CLI::App *app, UserOptions *options)
{
    CLI::App *user = app->add_subcommand("user", "Users of a volume")->require_subcommand(1);
    CLI::App *add =
        AddUserCommand(user, "add", "Add a user to a LUKS2 volume; a password of the volume authorises",
                       "pba_admin user add --volume disk.img --domain OFFICE boris", options, AddUser);
    AddIterTime(add, options);
    CLI::App *list =
        AddCommand(user, "list", "List the users", "pba_admin user list --volume disk.img --json");
    AddVolume(list, &options->volume)->required();
    AddJson(list, &options->json);
    list->final_callback([options] { ListUsers(*options); });
    AddUserCommand(user, "remove",
                   "Remove a user with what the user's password opens; another password of the volume "
                   "authorises",
                   "pba_admin user remove --volume disk.img --domain OFFICE boris", options, RemoveUser);
    AddUserCommand(user, "passwd",
                   "Give a user a new password; a password of the volume authorises, the user's or another",
                   "pba_admin user passwd --volume disk.img anna", options, ChangePassword);
}

} // namespace admin
