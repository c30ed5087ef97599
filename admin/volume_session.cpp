// SPDX-License-Identifier: Apache-2.0
#include "admin/volume_session.h"

#include "admin/commands.h"
#include "admin/failure.h"
#include "admin/passwords.h"
#include "admin/progress.h"
#include "admin/signals.h"
#include "volume/interrupted_changes.h"

namespace admin {

namespace {

constexpr std::uint32_t kDefaultIterTime = 2000; // milliseconds, as the standard tool has it

} // namespace

using volume::Volume;

std::unique_ptr<Volume> OpenVolume(const std::string &path)
{
    std::unique_ptr<Volume> volume;
    Require(Volume::Open(path, &volume), path);
    return volume;
}

std::unique_ptr<Volume> OpenVolumeForChange(const std::string &path)
{
    std::unique_ptr<Volume> volume = OpenVolume(path);
    Require(volume->CheckWritable(), path);
    const Progress progress("putting in order what was interrupted before");
    const HeldSignals held;
    Require(FinishInterruptedChanges(*volume), *volume);
    return volume;
}

base::Secret Authorise(Volume &volume, const PasswordSource &passwords)
{
    const base::Secret password = passwords.Existing();
    const Progress progress("looking for a keyslot that the password opens");
    base::Secret volumeKey;
    Require(volume.Authorise(password, &volumeKey), volume);
    return volumeKey;
}

void CheckName(const volume::UserName &name)
{
    if (const char *fault = volume::FindNameFault(name))
        throw Failure(fault, kExitUsage);
}

void CheckNewName(const volume::UserName &name)
{
    if (const char *fault = volume::FindNewNameFault(name))
        throw Failure(fault, kExitUsage);
}

volume::KeyCost CostOfFirstUser(const UserOptions &options)
{
    return volume::KeyCost::ForPassword(options.iterTime.value_or(kDefaultIterTime));
}

void Require(volume::Error error, const Volume &volume)
{
    if (error == volume::Error::PasswordTooShort)
        throw Failure(volume.Path() + ": the new password is too short; the policy asks for at least " +
                      std::to_string(volume.GetPolicy().minimumLength) + " characters");
    if (error != volume::Error::NoSpace)
        return Require(error, volume.Path(), volume.LastDetail());
    const volume::Room room = volume.RoomLeft();
    throw Failure(volume.Path() + ": the LUKS2 header has no room for that: left are " +
                  std::to_string(room.keyslots) + " keyslots, " + std::to_string(room.objects) +
                  " objects and " + std::to_string(room.bytes) +
                  " bytes, of which one, one and 1024 are kept for changing passwords; remove a user or a "
                  "keyslot first");
}

} // namespace admin
