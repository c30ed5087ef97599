// SPDX-License-Identifier: Apache-2.0
// Whether the input languages and hot keys of the settings can be used. What is wrong is logged.
#pragma once

#include "kro/result.h"
#include "settings_format/settings_record.h"

namespace fde::boot {

// 0, or the code of the first failure.
kro::result_t CheckInputLocales(const pba::PrebootSettings &settings);

} // namespace fde::boot
