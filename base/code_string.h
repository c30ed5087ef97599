// SPDX-License-Identifier: Apache-2.0
// Strings that people read out and type: Crockford's base-32 digits with a check digit at the end, which
// knows the row the string stands in.
//
// The check digit is computed in the field of 32 elements with x^5 + x^2 + 1: c = 2 * row, then c = 2 * (c
// xor d) for each digit d, and the last c is the digit. It catches every changed digit, every two digits that
// changed places and every string in another row, in strings of up to 31 digits.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/secret.h"

namespace base {

// The rows of challenge and response: no string of one passes in place of another.
inline constexpr int kFirstChallengeRow = 1;
inline constexpr int kFirstResponseRow = 9;
inline constexpr std::size_t kResponseDigits = 16; // of each of its strings, and the check digit

// As a person may have written it: small letters, O for 0, I and L for 1, blanks and hyphens between. Nothing
// when another character is in it.
std::optional<Secret> NormaliseCode(std::string_view text);

// In groups of four, as people read it out.
std::string InGroups(std::string_view code);

// Takes bits, the most significant first, and writes them as digits.
class CodeWriter
{
public:
    explicit CodeWriter(std::size_t digits)
        : m_digits(digits)
    {
    }

    void Put(std::uint32_t value, int bits);
    // The digits from `first` on, with the check digit of that row behind them.
    Secret Row(std::size_t first, std::size_t digits, int row) const;

private:
    Secret m_digits; // each 0 to 31
    std::uint32_t m_bits = 0;
    int m_bitCount = 0;
};

// The way back.
class CodeReader
{
public:
    explicit CodeReader(std::size_t digits)
        : m_digits(digits)
    {
    }

    // False when `text`, normalised already, is not a string of `digits` and their check digit in that row.
    [[nodiscard]] bool AddRow(std::string_view text, std::size_t digits, int row);
    std::uint32_t Take(int bits);

private:
    Secret m_digits;
    std::size_t m_position = 0; // in bits
};

// Whether AddRow would take it.
bool IsCodeString(std::string_view text, std::size_t digits, int row);
// Normalised; nothing when it cannot be the string of a response in this row, which counts from 0.
std::optional<Secret> NormaliseResponse(std::string_view text, std::size_t row);

} // namespace base
