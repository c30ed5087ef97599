// SPDX-License-Identifier: Apache-2.0
// The administrator's key pair as files: the public half, which computers are enrolled with, and the secret
// half, encrypted under a passphrase.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "volume/recovery/crypto.h"

namespace recovery {

// What one guess at the passphrase costs (Argon2id).
struct PassphraseCost
{
    std::uint64_t passes = 3;
    std::uint64_t memory = 256 * 1024 * 1024; // bytes
};

enum class KeyFileFault {
    None,
    NoKeyFile,
    WrongPassphrase, // also an altered file: the two cannot be told apart
    OutOfMemory,
};

std::string EncodePublicKey(const PublicKey &key);
// Nothing when `text` is no such file, or its key is one that keeps nothing secret.
std::optional<PublicKey> DecodePublicKey(std::string_view text);

// A new key pair: both files' contents differ with every call.
SecretKey MakeAdministratorKey();
// Throws std::bad_alloc also when the memory that `cost` asks for is not to be had.
std::string SealSecretKey(const SecretKey &key, const base::Secret &passphrase, const PassphraseCost &cost);
[[nodiscard]] KeyFileFault OpenSecretKey(std::string_view text, const base::Secret &passphrase,
                                         SecretKey *key);

} // namespace recovery
