// SPDX-License-Identifier: Apache-2.0
#include "admin/commands.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "admin/failure.h"
#include "admin/passwords.h"
#include "admin/progress.h"
#include "admin/scratch_file.h"
#include "admin/size.h"
#include "admin/volume_session.h"
#include "volume/luks/policy.h"
#include "volume/luks/users.h"

namespace admin {
namespace {

constexpr std::uint64_t kMinimumSize = volume::kHeaderBytes + 1024 * 1024;
constexpr std::uint64_t kSectorBytes = 4096;

std::uint64_t CheckSize(const std::string &text)
{
    const std::uint64_t size = ParseSize(text);
    if (size < kMinimumSize)
        throw Failure("--size " + text + ": too small; the header alone takes 16M, the minimum is 17M",
                      kExitUsage);
    if (size % kSectorBytes != 0)
        throw Failure("--size " + text + ": must be a multiple of 4K", kExitUsage);
    return size;
}

void SetSize(const ScratchFile &file, const std::string &path, std::uint64_t size)
{
    // The header's room is taken for good; the data take theirs when they are written.
    int error = posix_fallocate(file.File(), 0, volume::kHeaderBytes);
    if (error == 0 && ftruncate(file.File(), static_cast<off_t>(size)) != 0)
        error = errno;
    if (error != 0)
        throw Failure(path + ": cannot be made that large: " + std::strerror(error));
}

} // namespace

void CreateVolume(const VolumeOptions &options)
{
    const UserOptions &user = options.user;
    const std::uint64_t size = CheckSize(options.size);
    CheckNewName(user.name);
    if (access(user.volume.c_str(), F_OK) == 0)
        throw Failure(user.volume + ": exists already; choose another name or remove it first");
    const base::Secret password = PasswordSource(user.passwordFromStandardInput).New();
    if (!volume::IsLongEnough({}, password))
        Require(volume::Error::PasswordTooShort, user.volume);

    const Progress progress("making the volume and measuring what a login may cost");
    ScratchFile file(user.volume);
    SetSize(file, user.volume, size);
    std::unique_ptr<volume::Header> header;
    Require(volume::Header::Create(file.Path(), &header), user.volume);
    Require(volume::Users(*header).Add(user.name, base::Secret(), password, CostOfFirstUser(user)),
            user.volume, header->LastDetail());
    file.FinishNew();
}

} // namespace admin
