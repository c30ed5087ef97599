// SPDX-License-Identifier: Apache-2.0
// The string that crosses the boundary between host, view and platform.
//
// Layout, fixed: buffer pointer, length, capacity. Length and capacity count characters and leave the
// terminating zero out; a buffer that exists always ends in a zero and always comes from malloc, so that
// either side may grow or free it. A string that was never assigned has a null buffer; Data() is safe on it.
// Wide strings hold UTF-16 code units, narrow ones UTF-8 bytes. Growing may throw std::bad_alloc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

namespace kro {

template <typename Char>
class basic_string_t
{
public:
    using view_type = std::basic_string_view<Char>;

    basic_string_t() noexcept = default;
    basic_string_t(view_type text) { Assign(text); }
    basic_string_t(const Char *text) { Assign(view_type(text)); }
    basic_string_t(const basic_string_t &other) { Assign(other.View()); }
    basic_string_t(basic_string_t &&other) noexcept { Swap(other); }
    ~basic_string_t() { std::free(m_buffer); }

    basic_string_t &operator=(const basic_string_t &other)
    {
        if (this != &other)
            Assign(other.View());
        return *this;
    }
    basic_string_t &operator=(basic_string_t &&other) noexcept
    {
        Swap(other);
        return *this;
    }

    // Zero-terminated, never null.
    const Char *Data() const noexcept { return m_buffer ? m_buffer : &s_empty; }
    std::size_t Length() const noexcept { return m_length; }
    std::size_t Capacity() const noexcept { return m_capacity; }
    bool IsEmpty() const noexcept { return m_length == 0; }
    view_type View() const noexcept { return view_type(Data(), m_length); }

    // The writable characters; null on a string that was never assigned. The zero behind them stays.
    Char *Buffer() noexcept { return m_buffer; }

    // `text` may lie in this very string.
    void Assign(view_type text)
    {
        basic_string_t fresh;
        fresh.Resize(text.size());
        if (!text.empty())
            std::memcpy(fresh.m_buffer, text.data(), text.size() * sizeof(Char));
        Swap(fresh);
    }

    // New characters are zero.
    void Resize(std::size_t length)
    {
        Reserve(length);
        if (length > m_length)
            std::memset(m_buffer + m_length, 0, (length - m_length) * sizeof(Char));
        m_length = length;
        m_buffer[m_length] = Char();
    }

    void Reserve(std::size_t capacity)
    {
        if (m_buffer && capacity <= m_capacity)
            return;
        if (capacity > std::numeric_limits<std::size_t>::max() / sizeof(Char) - 1)
            throw std::bad_alloc();
        void *grown = std::realloc(m_buffer, (capacity + 1) * sizeof(Char));
        if (!grown)
            throw std::bad_alloc();
        m_buffer = static_cast<Char *>(grown);
        m_buffer[m_length] = Char();
        m_capacity = capacity;
    }

    // Overwrites the whole buffer with zeros, in a way that the compiler may not drop, and empties it.
    void Wipe() noexcept
    {
        volatile Char *cell = m_buffer;
        for (std::size_t left = m_buffer ? m_capacity : 0; left > 0; --left)
            *cell++ = Char();
        m_length = 0;
    }

    void Swap(basic_string_t &other) noexcept
    {
        std::swap(m_buffer, other.m_buffer);
        std::swap(m_length, other.m_length);
        std::swap(m_capacity, other.m_capacity);
    }

    friend bool operator==(const basic_string_t &a, const basic_string_t &b) noexcept
    {
        return a.View() == b.View();
    }

private:
    static constexpr Char s_empty{};

    Char *m_buffer = nullptr;
    std::size_t m_length = 0;
    std::size_t m_capacity = 0;
};

using string_t = basic_string_t<char>;
using wstring_t = basic_string_t<char16_t>;

static_assert(sizeof(string_t) == 3 * sizeof(void *) && std::is_standard_layout_v<string_t>);

} // namespace kro
