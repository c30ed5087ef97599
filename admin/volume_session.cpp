// SPDX-License-Identifier: Apache-2.0
#include "admin/volume_session.h"

#include "admin/commands.h"
#include "admin/failure.h"
#include "admin/passwords.h"
#include "admin/progress.h"
#include "admin/signals.h"
#include "volume/interrupted_changes.h"
#include "volume/luks/policy.h"

namespace admin {

namespace {

constexpr std::uint32_t kDefaultIterTime = 2000; // milliseconds, as the standard tool has it

} // namespace

using volume::Header;

std::unique_ptr<Header> OpenVolume(const std::string &path)
{
    std::unique_ptr<Header> header;
    Require(Header::Open(path, &header), path);
    return header;
}

std::unique_ptr<Header> OpenVolumeForChange(const std::string &path)
{
    std::unique_ptr<Header> header = OpenVolume(path);
    Require(header->CheckWritable(), path);
    const Progress progress("putting in order what was interrupted before");
    const HeldSignals held;
    Require(FinishInterruptedChanges(*header), *header);
    return header;
}

base::Secret Authorise(Header &header, const PasswordSource &passwords)
{
    const base::Secret password = passwords.Existing();
    const Progress progress("looking for a keyslot that the password opens");
    base::Secret volumeKey;
    Require(header.Authorise(password, &volumeKey), header);
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

void Require(volume::Error error, const Header &header)
{
    if (error == volume::Error::PasswordTooShort)
        throw Failure(header.Path() + ": the new password is too short; the policy asks for at least " +
                      std::to_string(volume::PolicyOf(header).minimumLength) + " characters");
    if (error != volume::Error::NoSpace)
        return Require(error, header.Path(), header.LastDetail());
    const volume::Room room = header.RoomLeft();
    throw Failure(header.Path() + ": the LUKS2 header has no room for that: left are " +
                  std::to_string(room.keyslots) + " keyslots, " + std::to_string(room.objects) +
                  " objects and " + std::to_string(room.bytes) +
                  " bytes, of which one, one and 1024 are kept for changing passwords; remove a user or a "
                  "keyslot first");
}

} // namespace admin
