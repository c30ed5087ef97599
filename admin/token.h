// SPDX-License-Identifier: Apache-2.0
// The commands of pba_admin token. Each throws Failure and leaves nothing half written.
#pragma once

#include <string>

#include "volume/luks/user.h"

namespace admin {

struct TokenOptions
{
    std::string volume;
    std::string uri;
    std::string module;
    volume::UserName name;
    int keyslot = 0;
    bool passwordFromStandardInput = false;
    bool json = false;
};

void EnrollToken(const TokenOptions &options);
// Those of the volume, or without one those that are connected.
void ListTokens(const TokenOptions &options);
void DropToken(const TokenOptions &options);

} // namespace admin
