// SPDX-License-Identifier: Apache-2.0
// The whole command line of pba_admin, from which it is parsed and its manual made.
#pragma once

#include "admin/commands.h"
#include "admin/recovery.h"
#include "admin/settings.h"
#include "admin/token.h"

namespace CLI {
class App;
}

namespace admin {

// What the options are parsed into.
struct Arguments
{
    VolumeOptions volume;
    UserOptions user;
    PolicyOptions policy;
    RecoveryOptions recovery;
    SettingsOptions settings;
    TokenOptions token;
};

// `arguments` must outlive the parsing, which runs the command.
void Describe(CLI::App *app, Arguments *arguments);

} // namespace admin
