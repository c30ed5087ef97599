// SPDX-License-Identifier: Apache-2.0
// Which PKCS#11 modules p11-kit's configuration names, without loading any.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

// What one configuration file says.
struct ModuleFile
{
    std::string name; // the file's, without its extension
    std::string text;
};

// The paths of the modules that are meant for this program, each once, in the order of their names. Of files
// with one name the first says what it says, and the later ones the rest.
std::vector<std::string> ModulesOf(const std::vector<ModuleFile> &files);

// Those of the system's configuration. A user's own is not looked at: whoever starts the system has none.
std::vector<std::string> ConfiguredModules();

} // namespace host
