// SPDX-License-Identifier: Apache-2.0
// UTF-8 and UTF-16, and nothing that a library would be needed for. Nothing is normalised.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace base {

// An unpaired surrogate becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);

// The number of UTF-16 code units that `text` takes; nothing when it is not valid UTF-8.
std::optional<std::size_t> Utf16Length(std::string_view text);
// Ends at the first byte that is not valid UTF-8: check with Utf16Length before.
std::u16string ToUtf16(std::string_view text);

// Takes the first character off a text that is not empty. UTF-8 that is cut off, overlong, a surrogate or
// beyond Unicode stays, and nothing comes back.
std::optional<char32_t> TakeUtf8(std::string_view *text);
char32_t TakeUtf16(std::u16string_view *text);

// Gives the bytes of a character to `put`, one by one, and keeps none of them.
template <typename Sink>
void PutUtf8(char32_t point, Sink put)
{
    const auto tail = [&](int shift) { put(static_cast<char>(0x80 | ((point >> shift) & 0x3F))); };
    if (point < 0x80) {
        put(static_cast<char>(point));
    } else if (point < 0x800) {
        put(static_cast<char>(0xC0 | (point >> 6)));
        tail(0);
    } else if (point < 0x10000) {
        put(static_cast<char>(0xE0 | (point >> 12)));
        tail(6);
        tail(0);
    } else {
        put(static_cast<char>(0xF0 | (point >> 18)));
        tail(12);
        tail(6);
        tail(0);
    }
}

} // namespace base
