// SPDX-License-Identifier: Apache-2.0
// The settings commands of pba_admin. Each throws Failure and leaves nothing half written.
#pragma once

#include <string>

namespace admin {

struct SettingsOptions
{
    std::string input;
    std::string output;
    std::string root = "/";
    bool json = false;
    bool detect = false; // the only way so far
};

void CompileSettings(const SettingsOptions &options);
void ShowSettings(const SettingsOptions &options);
void CheckSettings(const SettingsOptions &options);
// Of the system below `root`; to standard output without an output file.
void DetectSettings(const SettingsOptions &options);

} // namespace admin
