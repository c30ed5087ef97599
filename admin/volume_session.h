// SPDX-License-Identifier: Apache-2.0
// How commands open a volume, and how they fail on one.
#pragma once

#include <memory>
#include <string>

#include "volume/luks/header.h"
#include "volume/luks/user.h"

namespace admin {

class PasswordSource;
struct UserOptions;

// All throw Failure. The second finds out beforehand whether the header can be written, and puts in order
// what a loss of power left behind.
std::unique_ptr<volume::Header> OpenVolume(const std::string &path);
std::unique_ptr<volume::Header> OpenVolumeForChange(const std::string &path);

// With a password that the volume knows: answers its key.
base::Secret Authorise(volume::Header &header, const PasswordSource &passwords);

// Of a user that there is, and of one to be made.
void CheckName(const volume::UserName &name);
void CheckNewName(const volume::UserName &name);
volume::KeyCost CostOfFirstUser(const UserOptions &options);
// Throws Failure unless `error` is none, with the volume's numbers where they explain it.
void Require(volume::Error error, const volume::Header &header);

} // namespace admin
