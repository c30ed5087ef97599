// SPDX-License-Identifier: Apache-2.0
// The arguments file, meant for testing: one option, "test-mode", in the syntax of configuration files.
#pragma once

#include <boost/program_options/variables_map.hpp>

#include "kro/result.h"

namespace fde::boot {

inline constexpr char kTestModeOption[] = "test-mode";

// A file that cannot be opened holds no options and is no failure; one that makes no sense gives
// kInvalidArgument and is logged.
kro::result_t ReadPbaArguments(const char16_t *path, boost::program_options::variables_map &arguments);

} // namespace fde::boot
