// SPDX-License-Identifier: Apache-2.0
// Members of JSON objects that anybody may have written.
#pragma once

#include <cstdint>
#include <string>

#include <nlohmann/json.hpp>

namespace recovery {

// Empty when there is no such member or it is no text.
inline std::string TextMember(const nlohmann::json &object, const char *name)
{
    const auto member = object.find(name);
    return member != object.end() && member->is_string() ? member->get<std::string>() : std::string();
}

// 0 when there is no such member or it is no number from 0 on.
inline std::uint64_t NumberMember(const nlohmann::json &object, const char *name)
{
    const auto member = object.find(name);
    return member != object.end() && member->is_number_unsigned() ? member->get<std::uint64_t>() : 0;
}

} // namespace recovery
