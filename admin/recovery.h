// SPDX-License-Identifier: Apache-2.0
// Offline recovery of forgotten passwords: the administrator's keys, what computers are enrolled with, and
// the answer to a challenge. Each command throws Failure and leaves nothing half done.
#pragma once

#include <string>

#include "volume/luks/user.h"

namespace admin {

struct RecoveryOptions
{
    std::string volume;
    std::string publicKey; // the administrator's key: the file that computers are enrolled with
    std::string keys;      // the directory of both halves
    std::string escrow;
    std::string machine;
    volume::UserName name;
    bool passwordFromStandardInput = false;
    bool passphraseFromStandardInput = false;
    bool spell = false;
    bool json = false;
};

void MakeRecoveryKeys(const RecoveryOptions &options);
// The half that is no secret, from the other one.
void WritePublicKey(const RecoveryOptions &options);
void EnrollVolume(const RecoveryOptions &options);
void RenewRecovery(const RecoveryOptions &options);
void ShowRecovery(const RecoveryOptions &options);
void RespondToChallenge(const RecoveryOptions &options);

} // namespace admin
