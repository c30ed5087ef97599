// SPDX-License-Identifier: Apache-2.0
// Settings as an administrator writes them, in JSON (docs/settings-format.md).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "settings_format/settings_record.h"

namespace admin {

// Nothing when there is a fault. Every fault goes into `*faults`, as "place in the JSON: what is wrong".
std::optional<pba::ConstantSettingsRecord> ReadSettings(const std::string &json,
                                                        std::vector<std::string> *faults);

// Without host name and languages; the hot keys that a JSON without them has.
pba::ConstantSettingsRecord DefaultSettings();

// With a line break at its end.
std::string WriteSettings(const pba::ConstantSettingsRecord &record);

} // namespace admin
