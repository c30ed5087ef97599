// SPDX-License-Identifier: Apache-2.0
// A page of the manual, in the language of man(7).
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace manual {

struct Imprint
{
    std::string version; // of the project
    std::string date;
};

// `rest` is what a command line does not tell, as sections that are written already; it ends the page.
std::string ManPage(const CLI::App &app, const Imprint &imprint, const std::string &rest);

} // namespace manual
