// SPDX-License-Identifier: Apache-2.0
// How a Linux system below some root directory is set up: its name, its language, its keyboard.
#pragma once

#include <string>
#include <vector>

namespace admin {

struct XkbName
{
    std::string layout;
    std::string variant;
};

struct SystemSetup
{
    std::string hostName; // "" when there is none
    std::string locale;   // such as "de_DE.UTF-8", "" when there is none
    std::vector<XkbName> keyboard;
    // The file that the keyboard was found in, "" when there was none.
    std::string source;
};

// Reads etc/hostname; the locale of etc/locale.conf or etc/default/locale; the keyboard of
// etc/default/keyboard, else of etc/vconsole.conf. What is missing stays empty.
SystemSetup ReadSystemSetup(const std::string &root);

} // namespace admin
