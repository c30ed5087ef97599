// SPDX-License-Identifier: Apache-2.0
// When two names are the same to a person: in capitals or not, and however their accents were typed.
#pragma once

#include <string>
#include <string_view>

namespace volume {

// Case-folded and composed (NFC): two names are the same when these bytes are. What is not UTF-8 stays as it
// is. Throws std::bad_alloc.
std::string FoldName(std::string_view name);

} // namespace volume
