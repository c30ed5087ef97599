// SPDX-License-Identifier: Apache-2.0
// The directory that holds the two halves of the administrator's key.
#pragma once

#include <string>

#include "volume/recovery/administrator_key.h"

namespace admin {

// Asks for the passphrase. Throws Failure, like all of them.
recovery::SecretKey OpenSecretKeyIn(const std::string &directory, bool passphraseFromStandardInput);
recovery::PublicKey ReadPublicKey(const std::string &path);

} // namespace admin
