// SPDX-License-Identifier: Apache-2.0
// The command line of pba_admin recovery.
#include "admin/command_line.h"
#include "admin/recovery.h"
#include "volume/recovery/escrow_record.h"
#include "base/text.h"

namespace admin {
namespace {

// A record of a former version may have been sealed under another name.
std::string CheckNewMachine(const std::string &name)
{
    const bool usable = !name.empty() && name.size() <= recovery::kMaxMachineBytes && base::IsPlain(name);
    return usable ? "" : "must be UTF-8 text of 1 to 256 bytes in which every character shows";
}

void AddPassphraseFlag(CLI::App *command, RecoveryOptions *options)
{
    command->add_flag("--passphrase-stdin", options->passphraseFromStandardInput,
                      "The key's passphrase from the first line of standard input");
}

CLI::Option *AddEscrow(CLI::App *command, RecoveryOptions *options)
{
    AddPath(command, "--escrow", &options->escrow, "The file of sealed records")->required();
    return command->add_option("--machine", options->machine, "The name that the computer shows")->required();
}

void AddKeygen(CLI::App *recovery, RecoveryOptions *options)
{
    CLI::App *command =
        AddCommand(recovery, "keygen",
                   "Make the administrator's key: recovery.pub, to enrol computers with, and recovery.key, "
                   "encrypted, to answer challenges with. Prints its fingerprint",
                   "pba_admin recovery keygen --out /media/stick/recovery");
    AddPath(command, "--out", &options->keys, "Directory for both files, made when missing", "DIR")
        ->required();
    AddPassphraseFlag(command, options);
    AddJson(command, &options->json);
    command->final_callback([options] { MakeRecoveryKeys(*options); });
}

void AddPubkey(CLI::App *recovery, RecoveryOptions *options)
{
    CLI::App *command =
        AddCommand(recovery, "pubkey",
                   "Write recovery.pub anew from recovery.key, should it be missing. Prints its "
                   "fingerprint",
                   "pba_admin recovery pubkey --key /media/stick/recovery");
    AddPath(command, "--key", &options->keys, "The directory that keygen has made", "DIR")->required();
    AddPassphraseFlag(command, options);
    AddJson(command, &options->json);
    command->final_callback([options] { WritePublicKey(*options); });
}

void AddSetUp(CLI::App *recovery, RecoveryOptions *options, const char *name, const char *description,
              void (*run)(const RecoveryOptions &))
{
    const std::string example =
        std::string("pba_admin recovery ") + name +
        " --volume /dev/sda3 --admin-key recovery.pub --escrow escrow --machine lab-7";
    CLI::App *command = AddCommand(recovery, name, description, example.c_str());
    AddVolume(command, &options->volume)->required();
    AddPath(command, "--admin-key", &options->publicKey, "The administrator's recovery.pub")->required();
    AddEscrow(command, options)->check(CheckNewMachine);
    command->add_flag("--password-stdin", options->passwordFromStandardInput,
                      "The password that authorises from standard input");
    command->final_callback([options, run] { run(*options); });
}

void AddRespond(CLI::App *recovery, RecoveryOptions *options)
{
    CLI::App *command = AddCommand(
        recovery, "respond",
        "Answer the challenge that a caller reads out: asks for its four strings, a line each, and "
        "prints the two of the response. Make sure first who is calling",
        "pba_admin recovery respond --key /media/stick/recovery --escrow escrow --machine lab-7 "
        "--user anna");
    AddPath(command, "--key", &options->keys, "The directory that keygen has made", "DIR")->required();
    AddEscrow(command, options)->check(CheckNotEmpty);
    command->add_option("--user", options->name.user, "Whose password may be set")->required();
    command->add_option("--domain", options->name.domain,
                        "Domain of the user; may be left out where the name is the only one of its kind");
    command->add_flag("--spell", options->spell, "Print words of the spelling alphabet, too");
    AddPassphraseFlag(command, options);
    AddJson(command, &options->json)->excludes("--spell");
    command->final_callback([options] { RespondToChallenge(*options); });
}

void AddStatus(CLI::App *recovery, RecoveryOptions *options)
{
    CLI::App *command =
        AddCommand(recovery, "status", "Show whether a volume has a recovery and whether it was used",
                   "pba_admin recovery status --volume /dev/sda3");
    AddVolume(command, &options->volume)->required();
    AddJson(command, &options->json);
    command->final_callback([options] { ShowRecovery(*options); });
}

} // namespace

void AddRecoveryCommands(CLI::App *app, RecoveryOptions *options)
{
    CLI::App *recovery =
        app->add_subcommand("recovery", "Offline recovery of forgotten passwords")->require_subcommand(1);
    AddKeygen(recovery, options);
    AddPubkey(recovery, options);
    AddSetUp(recovery, options, "enroll", "Give a volume a recovery; a password of the volume authorises",
             EnrollVolume);
    AddSetUp(recovery, options, "renew",
             "Replace the secret of a volume's recovery, as after each use; the former one opens it no more",
             RenewRecovery);
    AddRespond(recovery, options);
    AddStatus(recovery, options);
}

} // namespace admin
