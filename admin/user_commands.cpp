// SPDX-License-Identifier: Apache-2.0
// The commands that change users: user add, remove and passwd.
#include "admin/commands.h"

#include <iostream>

#include "admin/failure.h"
#include "admin/passwords.h"
#include "admin/progress.h"
#include "admin/signals.h"
#include "admin/volume_session.h"
#include "volume/luks/users.h"
#include "volume/recovery/volume_recovery.h"
#include "volume/token/volume_tokens.h"

namespace admin {
namespace {

using base::Secret;
using volume::Error;
using volume::Header;

constexpr char kMakingKeyslot[] = "making the keyslot and trying whether it opens the volume";

volume::User ExistingUser(const Header &header, const volume::UserName &name)
{
    const std::optional<volume::User> user = volume::FindUser(header, name);
    if (!user)
        Require(Error::NoUser, header);
    return *user;
}

Secret NewPassword(Header &header, const volume::UserName &name, const PasswordSource &passwords)
{
    Secret password = passwords.New();
    const Progress progress("comparing the new password with the old one");
    Require(volume::Users(header).CheckNewPassword(name, password), header);
    return password;
}

} // namespace

void AddUser(const UserOptions &options)
{
    CheckNewName(options.name);
    const std::unique_ptr<Header> header = OpenVolumeForChange(options.volume);
    Require(volume::CheckNewUser(*header, options.name), *header);
    if (options.iterTime && volume::SharedCost(*header))
        std::cerr << "pba_admin: note: --iter-time counts for the first user only, others share its cost\n";
    const PasswordSource passwords(options.passwordFromStandardInput);
    const Secret volumeKey = Authorise(*header, passwords);
    const Secret password = NewPassword(*header, options.name, passwords);
    const Progress progress(kMakingKeyslot);
    const HeldSignals held;
    Require(volume::Users(*header).Add(options.name, volumeKey, password, CostOfFirstUser(options)), *header);
}

// A password that stays must be shown to open the volume.
void RemoveUser(const UserOptions &options)
{
    CheckName(options.name);
    const std::unique_ptr<Header> header = OpenVolumeForChange(options.volume);
    const volume::User user = ExistingUser(*header, options.name);
    Require(volume::CheckRemoval(*header, user), *header);
    const PasswordSource passwords(options.passwordFromStandardInput);
    const Secret password = passwords.Existing();
    const Progress progress("looking for another user's keyslot that the password opens");
    Secret volumeKey;
    const Error error = header->Authorise(password, &volumeKey, user.keyslots);
    if (error == Error::WrongPassword)
        throw Failure(options.volume + ": wrong password; give one that stays, not that of the user");
    Require(error, *header);
    {
        const HeldSignals held;
        Require(token::RemoveUser(*header, options.name), *header);
    }
    if (const auto recovery = recovery::Find(*header); recovery && recovery->enrolment.used)
        std::cerr << "pba_admin: note: the recovery secret was used; who has seen it still gets in until "
                     "pba_admin recovery renew\n";
}

void ChangePassword(const UserOptions &options)
{
    CheckName(options.name);
    const std::unique_ptr<Header> header = OpenVolumeForChange(options.volume);
    ExistingUser(*header, options.name);
    const PasswordSource passwords(options.passwordFromStandardInput);
    const Secret volumeKey = Authorise(*header, passwords);
    const Secret password = NewPassword(*header, options.name, passwords);
    const Progress progress(kMakingKeyslot);
    const HeldSignals held;
    Require(
        volume::Users(*header).ReplacePassword(options.name, volumeKey, password, CostOfFirstUser(options)),
        *header);
}

} // namespace admin
