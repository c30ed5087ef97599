// SPDX-License-Identifier: Apache-2.0
// The binary form of the settings, which the view reads (docs/settings-format.md).
#pragma once

#include <string>

#include "settings_format/settings_record.h"

namespace pba {

std::string EncodeSettings(const ConstantSettingsRecord &record);

} // namespace pba
