// SPDX-License-Identifier: Apache-2.0
// The command line of pba_admin token.
#include "admin/command_line.h"
#include "admin/token.h"
#include "volume/luks/user.h"

namespace admin {
namespace {

void AddModule(CLI::App *command, TokenOptions *options)
{
    AddPath(command, "--pkcs11-module", &options->module,
            "PKCS#11 module (default: all that p11-kit's configuration names)");
}

void AddAdd(CLI::App *token, TokenOptions *options)
{
    CLI::App *command = AddCommand(
        token, "add",
        "Let a user log on with a token that has an RSA key; a password of the volume and the token's PIN "
        "authorise. The standard tools open the volume with it, too",
        "pba_admin token add --volume /dev/sda3 --token 'pkcs11:serial=4711' --user anna");
    AddVolume(command, &options->volume)->required();
    command
        ->add_option("--token", options->uri, "PKCS#11 URI of the token, with id= where it has several keys")
        ->required()
        ->check(CheckNotEmpty);
    command->add_option("--user", options->name.user, "Name of the user")->required();
    command->add_option("--domain", options->name.domain, "Domain of the user (default: none)");
    AddModule(command, options);
    command->add_flag("--password-stdin", options->passwordFromStandardInput,
                      "Password and PIN from standard input, a line each");
    command->final_callback([options] { EnrollToken(*options); });
}

void AddList(CLI::App *token, TokenOptions *options)
{
    CLI::App *command =
        AddCommand(token, "list", "List the tokens that a volume knows, or without --volume those connected",
                   "pba_admin token list --volume /dev/sda3");
    AddVolume(command, &options->volume);
    AddModule(command, options);
    AddJson(command, &options->json);
    command->final_callback([options] { ListTokens(*options); });
}

void AddRemove(CLI::App *token, TokenOptions *options)
{
    CLI::App *command =
        AddCommand(token, "remove", "Take a token's keyslot away, so that it opens the volume no more",
                   "pba_admin token remove --volume /dev/sda3 --keyslot 3");
    AddVolume(command, &options->volume)->required();
    command->add_option("--keyslot", options->keyslot, "Number of the keyslot, as token list shows it")
        ->required()
        ->check(CLI::Range(0, volume::kMaxKeyslots - 1));
    command->final_callback([options] { DropToken(*options); });
}

} // namespace

void AddTokenCommands(CLI::App *app, TokenOptions *options)
{
    CLI::App *token = app->add_subcommand("token", "Tokens and smart cards of users")->require_subcommand(1);
    AddAdd(token, options);
    AddList(token, options);
    AddRemove(token, options);
}

} // namespace admin
