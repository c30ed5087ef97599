// SPDX-License-Identifier: Apache-2.0
// The version that the module shows and logs.
#pragma once

namespace pba {

inline constexpr char16_t kModuleVersion[] = u"3.0.1.92";

} // namespace pba
