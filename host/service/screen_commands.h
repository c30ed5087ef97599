// SPDX-License-Identifier: Apache-2.0
// How the screens of this program and the processes of PKCS#11 modules are started, and as whom.
#pragma once

#include "host/service/command_line.h"
#include "host/service/screen_process.h"
#include "host/service/tokens/token_options.h"

namespace host {

// "UID:GID,GID...": whom root's screens run as; empty when this is not root, and nobody changes. What is
// wrong with the choice is in `*fault`, in one line without a full stop, and empty when nothing is.
std::string FindScreenUser(const std::string &chosen, std::string *fault);
// Another one, since processes of one user can do much to each other.
std::string FindTokenUser(const std::string &chosen, std::string *fault);

// In the order in which they stand in for each other. Line by line only where there is a terminal. After the
// log and the root of the files have been told to the platform.
std::vector<ScreenCommand> ScreenCommands(const CommandLine &line, const std::string &user, bool hasTerminal);
TokenOptions TokenOptionsFor(const CommandLine &line, const std::string &user);

} // namespace host
