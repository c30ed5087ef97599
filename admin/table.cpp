// SPDX-License-Identifier: Apache-2.0
#include "admin/table.h"

#include <algorithm>
#include <iostream>

#include "base/text.h"

namespace admin {
namespace {

std::size_t Width(const std::string &text)
{
    return base::Utf16Length(text).value_or(text.size());
}

void PrintRow(const Row &row, const std::vector<std::size_t> &widths)
{
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
        line += row[column];
        line.append(widths[column] - Width(row[column]) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    std::cout << line << '\n';
}

} // namespace

void PrintTable(const Row &headings, const std::vector<Row> &rows)
{
    std::vector<Row> lines{headings};
    lines.insert(lines.end(), rows.begin(), rows.end());
    std::vector<std::size_t> widths(headings.size());
    for (Row &line : lines) {
        for (std::size_t column = 0; column < line.size(); ++column) {
            line[column] = base::Printable(line[column]);
            widths[column] = std::max(widths[column], Width(line[column]));
        }
    }
    for (const Row &line : lines)
        PrintRow(line, widths);
}

} // namespace admin
