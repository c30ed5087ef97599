// SPDX-License-Identifier: Apache-2.0
#include "base/code_string.h"

#include <algorithm>
#include <array>

namespace base {
namespace {

constexpr std::string_view kAlphabet = "0123456789ABCDEFGHJKMNPQRSTVWXYZ";
constexpr int kBitsPerDigit = 5;
constexpr std::uint8_t kOverflow = 0x20;
constexpr std::uint8_t kPolynomial = 0x25;
constexpr std::size_t kMaxCharacters = 64; // many more than a string with its blanks

constexpr std::uint8_t Double(std::uint8_t element)
{
    const auto doubled = static_cast<std::uint8_t>(element << 1);
    return doubled & kOverflow ? doubled ^ kPolynomial : doubled;
}

std::uint8_t CheckDigit(std::string_view digits, int row)
{
    std::uint8_t check = Double(static_cast<std::uint8_t>(row));
    for (char digit : digits)
        check = Double(check ^ static_cast<std::uint8_t>(digit));
    return check;
}

// The digit that `c` stands for; nothing for any other character.
std::optional<char> CanonicalDigit(char c)
{
    if (c >= 'a' && c <= 'z')
        c = static_cast<char>(c - 'a' + 'A');
    if (c == 'O')
        c = '0';
    else if (c == 'I' || c == 'L')
        c = '1';
    return kAlphabet.find(c) != std::string_view::npos ? std::optional(c) : std::nullopt;
}

bool IsSeparator(char c)
{
    return c == ' ' || c == '\t' || c == '-';
}

} // namespace

std::optional<Secret> NormaliseCode(std::string_view text)
{
    Secret code(kMaxCharacters);
    for (char c : text) {
        if (IsSeparator(c))
            continue;
        const std::optional<char> digit = CanonicalDigit(c);
        if (!digit || !code.Append(*digit))
            return std::nullopt;
    }
    return code;
}

void CodeWriter::Put(std::uint32_t value, int bits)
{
    for (int bit = bits - 1; bit >= 0; --bit) {
        m_bits = (m_bits << 1) | ((value >> bit) & 1);
        if (++m_bitCount == kBitsPerDigit) {
            m_digits.Append(static_cast<char>(m_bits));
            m_bits = 0;
            m_bitCount = 0;
        }
    }
}

Secret CodeWriter::Row(std::size_t first, std::size_t digits, int row) const
{
    const std::string_view values = m_digits.View().substr(first, digits);
    Secret text(digits + 1);
    for (char value : values)
        text.Append(kAlphabet[static_cast<std::uint8_t>(value)]);
    text.Append(kAlphabet[CheckDigit(values, row)]);
    return text;
}

bool CodeReader::AddRow(std::string_view text, std::size_t digits, int row)
{
    if (text.size() != digits + 1 || m_digits.Capacity() - m_digits.Size() < digits)
        return false;
    Secret values(text.size());
    for (char c : text) {
        const std::size_t value = kAlphabet.find(c);
        if (value == std::string_view::npos)
            return false;
        values.Append(static_cast<char>(value));
    }
    const std::string_view checked = values.View().substr(0, digits);
    if (CheckDigit(checked, row) != static_cast<std::uint8_t>(values.View().back()))
        return false;
    for (char value : checked)
        m_digits.Append(value);
    return true;
}

std::uint32_t CodeReader::Take(int bits)
{
    std::uint32_t value = 0;
    for (; bits > 0; --bits, ++m_position) {
        const auto digit = static_cast<std::uint8_t>(m_digits.View()[m_position / kBitsPerDigit]);
        value = (value << 1) | ((digit >> (kBitsPerDigit - 1 - m_position % kBitsPerDigit)) & 1u);
    }
    return value;
}

bool IsCodeString(std::string_view text, std::size_t digits, int row)
{
    return CodeReader(digits).AddRow(text, digits, row);
}

std::optional<Secret> NormaliseResponse(std::string_view text, std::size_t row)
{
    std::optional<Secret> code = NormaliseCode(text);
    if (code && !IsCodeString(code->View(), kResponseDigits, kFirstResponseRow + static_cast<int>(row)))
        code.reset();
    return code;
}

std::string InGroups(std::string_view code)
{
    constexpr std::size_t kGroup = 4;
    std::string groups;
    for (std::size_t place = 0; place < code.size(); place += kGroup)
        groups.append(place == 0 ? "" : " ").append(code.substr(place, kGroup));
    return groups;
}

} // namespace base
