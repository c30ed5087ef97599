// SPDX-License-Identifier: Apache-2.0
// What an option or a positional argument takes, as far as its command line tells.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace manual {

struct Argument
{
    std::string name;                 // FILE, DIR, TEXT, NUMBER; empty for a flag
    std::vector<std::string> choices; // these words and no others
    std::string range;                // as "1 - 127"
};

Argument ArgumentOf(const CLI::Option &option);

std::vector<std::string> Split(const std::string &text, char separator);

// All that a person may type, without the hidden ones, in the order of the help.
std::vector<const CLI::Option *> OptionsOf(const CLI::App &app);
std::vector<const CLI::Option *> PositionalsOf(const CLI::App &app);
std::vector<const CLI::App *> CommandsOf(const CLI::App &app);
// "--help", or "-h, --help" where there are both.
std::string NameOf(const CLI::Option &option);

} // namespace manual
