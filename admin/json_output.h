// SPDX-License-Identifier: Apache-2.0
// Reports for programs, on standard output.
#pragma once

#include <iostream>

#include <nlohmann/json.hpp>

namespace admin {

// Text that comes from a header may be anything. It stays what it is for whoever reads the JSON, but reaches
// a terminal in ASCII only.
template <typename Json>
void PrintJson(const Json &value)
{
    std::cout << value.dump(2, ' ', true, Json::error_handler_t::replace) << '\n';
}

} // namespace admin
