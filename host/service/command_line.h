// SPDX-License-Identifier: Apache-2.0
// The command line of pba_host, which scripts and the boot image rely on.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace host {

struct CommandLine
{
    std::string root;
    std::string volume;
    std::string mapperName;
    std::string mapperOptions;
    std::string log;
    std::optional<std::uint32_t> logSeverity;
    std::string module;
    bool stateInHeader = false;
    std::string tokenModule;
    unsigned tokenTimeout = 60; // seconds
    std::string tokenUser;
    bool testBoot = false;
    bool autologonAllowed = false;
    bool noPasswordLogin = false;
    bool text = false;
    std::string screenUser;
    bool landlockRequired = false;
};

// Also makes the manual. `line` must outlive the parsing.
void Describe(CLI::App *app, CommandLine *line);

// Nothing when the program is to end with `*exitCode`: after --help and --version, which write to standard
// output, and after a fault, one line on standard error.
std::optional<CommandLine> ParseCommandLine(int argc, char **argv, int *exitCode);

} // namespace host
