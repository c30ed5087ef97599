// SPDX-License-Identifier: Apache-2.0
// What is wrong or odd in settings that could be read.
#pragma once

#include <vector>

#include "admin/settings_file.h"

namespace admin {

inline constexpr char kWholeFile[] = "the whole file";

// All faults, by the view's own rules, and warnings: layouts that the platform does not know, hot keys that
// hide each other or take a key that passwords need.
void FindInRecord(const pba::ConstantSettingsRecord &record, std::vector<Finding> *findings);

} // namespace admin
