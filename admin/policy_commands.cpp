// SPDX-License-Identifier: Apache-2.0
// What a volume asks of its users' passwords and logins: policy show and policy set.
#include <algorithm>
#include <ctime>

#include "admin/command_line.h"
#include "admin/commands.h"
#include "admin/failure.h"
#include "admin/json_output.h"
#include "admin/table.h"
#include "admin/volume_session.h"
#include "volume/luks/policy.h"
#include "volume/luks/users.h"

namespace admin {
namespace {

using volume::Policy;

std::string Count(std::uint32_t number, const char *unit, const char *none)
{
    return number == 0 ? none : std::to_string(number) + " " + unit;
}

template <typename Value>
bool Apply(const std::optional<Value> &given, Value *value)
{
    *value = given.value_or(*value);
    return given.has_value();
}

void AddNumber(CLI::App *command, const char *name, std::optional<std::uint32_t> *number,
               const char *description, std::uint32_t minimum, std::uint32_t maximum)
{
    command->add_option(name, *number, description)->check(CLI::Range(minimum, maximum));
}

void AddChoice(CLI::App *command, const char *name, std::optional<bool> *choice, const char *description)
{
    command
        ->add_option_function<std::string>(
            name, [choice](const std::string &word) { *choice = word == "yes"; }, description)
        ->type_name("")
        ->check(CLI::IsMember({"yes", "no"}));
}

// How old passwords are that were set while the clock stood in the future is not known: they count as set
// now.
volume::Error ResetDates(volume::Header &header, std::int64_t now)
{
    for (volume::User &user : volume::UsersOf(header)) {
        if (user.changed.value_or(now) <= now)
            continue;
        user.changed = now;
        const volume::Error error = header.WriteObject(volume::EncodeUser(user), &user.object);
        if (error != volume::Error::None)
            return error;
    }
    return volume::Error::None;
}

} // namespace

void ShowPolicy(const PolicyOptions &options)
{
    const Policy policy = volume::PolicyOf(*OpenVolume(options.volume));
    if (options.json) {
        nlohmann::json object = nlohmann::json::parse(volume::EncodePolicy(policy));
        object.erase("type");
        object.erase("keyslots");
        PrintJson(object);
        return;
    }
    const std::string delay = Count(policy.delaySeconds, "seconds after each failure", "none");
    PrintTable({"POLICY", "VALUE"},
               {{"minimum length", Count(policy.minimumLength, "characters", "any")},
                {"not the old password", policy.notOldPassword ? "yes" : "no"},
                {"passwords expire", Count(policy.expiryDays, "days after they were set", "never")},
                {"automatic logon", policy.autologonAllowed ? "allowed" : "not allowed"},
                {"failures without delay", std::to_string(policy.freeAttempts)},
                {"delay afterwards", delay}});
}

// No password authorises this: nothing secret is read or written, and who can write the header could do
// without this command.
void SetPolicy(const PolicyOptions &options)
{
    const auto header = OpenVolumeForChange(options.volume);
    Policy policy = volume::PolicyOf(*header);
    const bool any[] = {Apply(options.minimumLength, &policy.minimumLength),
                        Apply(options.notOldPassword, &policy.notOldPassword),
                        Apply(options.expiryDays, &policy.expiryDays),
                        Apply(options.autologonAllowed, &policy.autologonAllowed),
                        Apply(options.freeAttempts, &policy.freeAttempts),
                        Apply(options.delaySeconds, &policy.delaySeconds),
                        options.clockReset};
    if (options.clockReset)
        policy.clockReset = std::time(nullptr);
    if (std::find(std::begin(any), std::end(any), true) == std::end(any))
        throw Failure("nothing to set; see pba_admin policy set --help", kExitUsage);
    const auto change = [&] {
        const volume::Error error = volume::SetPolicy(*header, policy);
        return error == volume::Error::None && options.clockReset ? ResetDates(*header, policy.clockReset)
                                                                  : error;
    };
    Require(header->Change(change), *header);
}

void AddPolicyCommands(CLI::App *app, PolicyOptions *options)
{
    CLI::App *policy =
        app->add_subcommand("policy", "What a volume asks of passwords and logins")->require_subcommand(1);
    CLI::App *show = AddCommand(policy, "show", "Show the policy of a volume",
                                "pba_admin policy show --volume disk.img --json");
    AddVolume(show, &options->volume)->required();
    AddJson(show, &options->json);
    show->final_callback([options] { ShowPolicy(*options); });

    CLI::App *set = AddCommand(policy, "set", "Change the policy of a volume; what is not given stays",
                               "pba_admin policy set --volume disk.img --minimum-length 12 --expiry-days 90");
    AddVolume(set, &options->volume)->required();
    AddNumber(set, "--minimum-length", &options->minimumLength, "Of a new password, in characters", 1,
              volume::kMaxMinimumLength);
    AddChoice(set, "--not-old-password", &options->notOldPassword, "A new password must be another one");
    AddNumber(set, "--expiry-days", &options->expiryDays, "Days that a password lasts; 0: for ever", 0,
              volume::kMaxExpiryDays);
    AddChoice(set, "--autologon", &options->autologonAllowed, "Whether an automatic logon is allowed");
    AddNumber(set, "--free-attempts", &options->freeAttempts, "Failed logins that cost no delay", 0,
              volume::kMaxFreeAttempts);
    AddNumber(set, "--delay-seconds", &options->delaySeconds, "Delay after each further one; 0: none", 0,
              volume::kMaxDelaySeconds);
    set->add_flag("--clock-reset", options->clockReset,
                  "The date is that of this computer, whatever later one was seen before: after a clock was "
                  "wrong");
    set->final_callback([options] { SetPolicy(*options); });
}

} // namespace admin
