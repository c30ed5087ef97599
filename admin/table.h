// SPDX-License-Identifier: Apache-2.0
// Rows in columns on standard output, for people; programs take --json.
#pragma once

#include <string>
#include <vector>

namespace admin {

using Row = std::vector<std::string>;

// All rows are as long as the headings. Text that comes from a header may be anything: it is made printable.
void PrintTable(const Row &headings, const std::vector<Row> &rows);

} // namespace admin
