#include "admin/volume_session.h"

#include "admin/commands.h"
#include "admin/failure.h"
#include "volume/recovery/volume_recovery.h"
#include "admin/signals.h"
#include "volume/token/volume_tokens.h"

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
    const HeldSignals held;
    Require(volume->FinishPending(), *volume);
    Require(recovery::FinishPending(*volume), *volume);
    Require(token::FinishPending(*volume), *volume);
    return volume;
}

void CheckName(const volume::UserName &name)
{
    if (const char *fault = volume::FindNameFault(name))
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
