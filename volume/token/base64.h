// SPDX-License-Identifier: Apache-2.0
// Base-64 with padding and without line breaks, as it stands in LUKS2 headers.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/secret.h"

namespace token {

std::string ToBase64(std::string_view bytes);
base::Secret ToSecretBase64(const base::Secret &bytes);
// Nothing when `text` is not base-64.
std::optional<std::string> FromBase64(std::string_view text);

} // namespace token
