// SPDX-License-Identifier: Apache-2.0
#include "base/utf.h"

#include <cstdint>

namespace base {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}
bool IsSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xE000;
}

// The bytes of the sequence that `lead` begins; 0 for a byte that begins none.
std::size_t SequenceLength(std::uint8_t lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

} // namespace

char32_t TakeUtf16(std::u16string_view *text)
{
    const char32_t first = text->front();
    text->remove_prefix(1);
    if (!IsSurrogate(first))
        return first;
    if (!IsHighSurrogate(first) || text->empty() || !IsLowSurrogate(text->front()))
        return kReplacement;
    const char32_t second = text->front();
    text->remove_prefix(1);
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

std::optional<char32_t> TakeUtf8(std::string_view *text)
{
    static constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<std::uint8_t>(text->front());
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || text->size() < length)
        return std::nullopt;
    char32_t point = length == 1 ? lead : lead & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<std::uint8_t>((*text)[i]);
        if ((next & 0xC0) != 0x80)
            return std::nullopt;
        point = (point << 6) | (next & 0x3F);
    }
    if (point < kSmallest[length] || IsSurrogate(point) || point > 0x10FFFF)
        return std::nullopt;
    text->remove_prefix(length);
    return point;
}

std::string ToUtf8(std::u16string_view text)
{
    std::string bytes;
    while (!text.empty())
        PutUtf8(TakeUtf16(&text), [&](char byte) { bytes.push_back(byte); });
    return bytes;
}

std::optional<std::size_t> Utf16Length(std::string_view text)
{
    std::size_t units = 0;
    while (!text.empty()) {
        const std::optional<char32_t> point = TakeUtf8(&text);
        if (!point)
            return std::nullopt;
        units += *point >= 0x10000 ? 2 : 1;
    }
    return units;
}

std::u16string ToUtf16(std::string_view text)
{
    std::u16string units;
    while (!text.empty()) {
        const std::optional<char32_t> point = TakeUtf8(&text);
        if (!point)
            break;
        if (*point >= 0x10000) {
            units.push_back(static_cast<char16_t>(0xD800 + ((*point - 0x10000) >> 10)));
            units.push_back(static_cast<char16_t>(0xDC00 + ((*point - 0x10000) & 0x3FF)));
        } else {
            units.push_back(static_cast<char16_t>(*point));
        }
    }
    return units;
}

} // namespace base
