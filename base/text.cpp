// SPDX-License-Identifier: Apache-2.0
#include "base/text.h"

#include <charconv>
#include <cstdint>
#include <iterator>

#include <utf8proc.h>

namespace base {
namespace {

constexpr std::size_t kMaxBytesPerUnit = 3;

bool Shows(char32_t point)
{
    const utf8proc_property_t *property = utf8proc_get_property(static_cast<utf8proc_int32_t>(point));
    switch (property->category) {
    case UTF8PROC_CATEGORY_CC:
    case UTF8PROC_CATEGORY_CF:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
        return false;
    case UTF8PROC_CATEGORY_ZS:
        return point == ' ';
    default:
        return !property->ignorable;
    }
}

bool LooksEscaped(std::string_view text)
{
    return text.starts_with("\\x") || text.starts_with("\\u{");
}

std::string ToHex(char32_t number)
{
    char digits[8];
    return {digits, std::to_chars(std::begin(digits), std::end(digits), std::uint32_t(number), 16).ptr};
}

} // namespace

Secret ToSecretUtf8(std::u16string_view text)
{
    Secret bytes(kMaxBytesPerUnit * text.size());
    while (!text.empty())
        PutUtf8(TakeUtf16(&text), [&](char byte) { bytes.Append(byte); });
    return bytes;
}

bool IsPlain(std::string_view text)
{
    while (!text.empty()) {
        const std::optional<char32_t> point = TakeUtf8(&text);
        if (!point || !Shows(*point))
            return false;
    }
    return true;
}

std::string Printable(std::string_view text)
{
    std::string line;
    while (!text.empty()) {
        const std::string_view before = text;
        const std::optional<char32_t> point = TakeUtf8(&text);
        if (!point) {
            line += "\\x" + ToHex(static_cast<std::uint8_t>(text.front()));
            text.remove_prefix(1);
        } else if (!Shows(*point) || LooksEscaped(before)) {
            line += "\\u{" + ToHex(*point) + "}";
        } else {
            line += before.substr(0, before.size() - text.size());
        }
    }
    return line;
}

} // namespace base
