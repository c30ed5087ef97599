// SPDX-License-Identifier: Apache-2.0
// The commands of pba_admin. Each throws Failure and leaves nothing half written.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "volume/luks/user.h"

namespace admin {

struct UserOptions
{
    std::string volume;
    volume::UserName name;
    std::optional<std::uint32_t> iterTime; // milliseconds
    bool passwordFromStandardInput = false;
    bool json = false;
};

struct VolumeOptions
{
    UserOptions user;
    std::string size; // as on the command line
};

struct PolicyOptions
{
    std::string volume;
    // What is not given stays as it is.
    std::optional<std::uint32_t> minimumLength;
    std::optional<bool> notOldPassword;
    std::optional<std::uint32_t> expiryDays;
    std::optional<bool> autologonAllowed;
    std::optional<std::uint32_t> freeAttempts;
    std::optional<std::uint32_t> delaySeconds;
    bool clockReset = false;
    bool json = false;
};

// Makes the file with its first user.
void CreateVolume(const VolumeOptions &options);
void ShowVolume(const VolumeOptions &options);
void AddUser(const UserOptions &options);
void RemoveUser(const UserOptions &options);
void ChangePassword(const UserOptions &options);
void ListUsers(const UserOptions &options);
void ShowPolicy(const PolicyOptions &options);
void SetPolicy(const PolicyOptions &options);

} // namespace admin
