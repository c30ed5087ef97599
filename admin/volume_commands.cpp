#include "commands.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

#include "failure.h"
#include "passwords.h"
#include "scratch_file.h"
#include "signals.h"
#include "size.h"
#include "volume/volume.h"

namespace admin {
namespace {

using volume::Secret;
using volume::Volume;

constexpr std::uint32_t kDefaultIterTime = 2000; // milliseconds, as the standard tool has it
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

void CheckName(const volume::UserName &name)
{
    if (const char *fault = volume::FindNameFault(name))
        throw Failure(fault, kExitUsage);
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

// On a context of its own, as a login would do it: what was written must open again.
void Prove(const std::string &path, const volume::UserName &name, const Secret &password)
{
    std::unique_ptr<Volume> volume;
    volume::Error error = Volume::Open(path, &volume);
    if (error == volume::Error::None)
        error = volume->Login(name, password, nullptr);
    Require(error, path + ": the new password was written but does not open the volume");
}

bool HasUser(const Volume &volume, const volume::UserName &name)
{
    const std::vector<volume::User> users = volume.Users();
    return std::any_of(users.begin(), users.end(),
                       [&](const volume::User &user) { return user.name == name; });
}

volume::KeyCost CostOfNewUser(const Volume &volume, const UserOptions &options)
{
    const std::optional<volume::KeyCost> shared = volume.SharedCost();
    if (shared && options.iterTime)
        std::cerr << "pba_admin: note: --iter-time counts for the first user only, others share its cost\n";
    return shared ? *shared : volume::KeyCost::ForPassword(options.iterTime.value_or(kDefaultIterTime));
}

} // namespace

void CreateVolume(const UserOptions &options, const std::string &sizeText)
{
    const std::uint64_t size = CheckSize(sizeText);
    CheckName(options.name);
    if (access(options.volume.c_str(), F_OK) == 0)
        throw Failure(options.volume + ": exists already; choose another name or remove it first");
    const Secret password = PasswordSource(options.passwordFromStandardInput).New();

    ScratchFile file(options.volume);
    SetSize(file, options.volume, size);
    std::unique_ptr<Volume> volume;
    Require(Volume::Create(file.Path(), &volume), options.volume);
    const auto cost = volume::KeyCost::ForPassword(options.iterTime.value_or(kDefaultIterTime));
    Require(volume->AddUser(options.name, Secret(), password, cost), options.volume, volume->LastDetail());
    Prove(file.Path(), options.name, password);
    file.FinishNew();
}

void AddUser(const UserOptions &options)
{
    CheckName(options.name);
    std::unique_ptr<Volume> volume;
    Require(Volume::Open(options.volume, &volume), options.volume);
    Require(volume->CheckWritable(), options.volume);
    if (HasUser(*volume, options.name))
        Require(volume::Error::UserExists, options.volume);

    const PasswordSource passwords(options.passwordFromStandardInput);
    Secret volumeKey;
    Require(volume->Authorise(passwords.Existing(), &volumeKey), options.volume);
    const Secret password = passwords.New();
    const volume::KeyCost cost = CostOfNewUser(*volume, options);
    {
        const HeldSignals held; // a keyslot whose object is missing would stay for good
        Require(volume->AddUser(options.name, volumeKey, password, cost), options.volume,
                volume->LastDetail());
    }
    Prove(options.volume, options.name, password);
}

} // namespace admin
