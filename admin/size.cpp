// SPDX-License-Identifier: Apache-2.0
#include "admin/size.h"

#include <charconv>
#include <limits>
#include <optional>
#include <string_view>

#include "admin/failure.h"

namespace admin {
namespace {

constexpr std::uint64_t kMaxBytes = std::numeric_limits<std::int64_t>::max();

std::optional<int> ShiftOf(std::string_view suffix)
{
    if (suffix.empty())
        return 0;
    static constexpr std::string_view kSuffixes = "KMG";
    const std::size_t place = kSuffixes.find(suffix.front());
    if (suffix.size() != 1 || place == std::string_view::npos)
        return std::nullopt;
    return 10 * static_cast<int>(place + 1);
}

} // namespace

std::uint64_t ParseSize(const std::string &text)
{
    std::uint64_t number = 0;
    const char *last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    const std::optional<int> shift = ShiftOf({end, static_cast<std::size_t>(last - end)});
    if (error != std::errc() || !shift || number > kMaxBytes >> *shift)
        throw Failure("--size " + text + ": must be a number of bytes, or end in K, M or G, as in 64M",
                      kExitUsage);
    return number << *shift;
}

} // namespace admin
