// SPDX-License-Identifier: Apache-2.0
// A completion script for bash, which needs nothing but bash.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace manual {

std::string BashCompletion(const CLI::App &app);

} // namespace manual
