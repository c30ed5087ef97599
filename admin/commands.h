// The commands of pba_admin. Each throws Failure and leaves nothing half written.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "volume/user.h"

namespace admin {

struct UserOptions
{
    std::string volume;
    volume::UserName name;
    std::optional<std::uint32_t> iterTime; // milliseconds
    bool passwordFromStandardInput = false;
};

// Makes the file, of `size` as on the command line, with its first user.
void CreateVolume(const UserOptions &options, const std::string &size);
void AddUser(const UserOptions &options);
void CompileSettings(const std::string &input, const std::string &output);

} // namespace admin
