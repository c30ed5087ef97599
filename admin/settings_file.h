// SPDX-License-Identifier: Apache-2.0
// A file of settings in either form, and what there is to say about it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "settings_format/settings_record.h"

namespace admin {

struct Finding
{
    // The view refuses settings with faults and takes its own; a warning is something that it does not look
    // at.
    bool isFault;
    std::string place; // as in the JSON
    std::string what;

    std::string Line() const { return place + ": " + what; }
};

struct SettingsFile
{
    // Nothing when the file cannot be read as settings.
    std::optional<pba::ConstantSettingsRecord> record;
    std::vector<Finding> findings;

    bool HasFaults() const;
};

// Throws Failure when there is no such file.
SettingsFile ReadSettingsFile(const std::string &path);

} // namespace admin
