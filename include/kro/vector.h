// SPDX-License-Identifier: Apache-2.0
// The list that crosses the boundary between host, view and platform.
//
// Layout, fixed: buffer pointer, number of elements, capacity in elements. The buffer comes from malloc, so
// that either side may grow or free it. An empty list may have a null buffer. Growing may throw
// std::bad_alloc; elements must be movable without throwing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace kro {

template <typename T>
class vector_t
{
    static_assert(alignof(T) <= alignof(std::max_align_t));

public:
    vector_t() noexcept = default;
    vector_t(const vector_t &other)
    {
        try {
            Reserve(other.m_size);
            for (const T &element : other)
                PushBack(element);
        } catch (...) {
            Destroy();
            throw;
        }
    }
    vector_t(vector_t &&other) noexcept { Swap(other); }
    ~vector_t() { Destroy(); }

    vector_t &operator=(const vector_t &other)
    {
        vector_t copy(other);
        Swap(copy);
        return *this;
    }
    vector_t &operator=(vector_t &&other) noexcept
    {
        Swap(other);
        return *this;
    }

    const T *Data() const noexcept { return m_buffer; }
    T *Data() noexcept { return m_buffer; }
    std::size_t Size() const noexcept { return m_size; }
    std::size_t Capacity() const noexcept { return m_capacity; }
    bool IsEmpty() const noexcept { return m_size == 0; }

    const T &operator[](std::size_t index) const noexcept { return m_buffer[index]; }
    T &operator[](std::size_t index) noexcept { return m_buffer[index]; }
    const T *begin() const noexcept { return m_buffer; }
    const T *end() const noexcept { return m_buffer + m_size; }
    T *begin() noexcept { return m_buffer; }
    T *end() noexcept { return m_buffer + m_size; }

    void PushBack(T element)
    {
        if (m_size == m_capacity)
            Reserve(m_capacity < 4 ? 4 : 2 * m_capacity);
        new (m_buffer + m_size) T(std::move(element));
        ++m_size;
    }

    // New elements are value-initialised.
    void Resize(std::size_t size)
    {
        Reserve(size);
        while (m_size > size)
            m_buffer[--m_size].~T();
        for (; m_size < size; ++m_size)
            new (m_buffer + m_size) T();
    }

    void Clear() noexcept
    {
        while (m_size > 0)
            m_buffer[--m_size].~T();
    }

    void Reserve(std::size_t capacity)
    {
        static_assert(std::is_nothrow_move_constructible_v<T>);
        if (capacity <= m_capacity)
            return;
        if (capacity > std::numeric_limits<std::size_t>::max() / sizeof(T))
            throw std::bad_alloc();
        T *grown = static_cast<T *>(std::malloc(capacity * sizeof(T)));
        if (!grown)
            throw std::bad_alloc();
        std::uninitialized_move(begin(), end(), grown);
        std::destroy(begin(), end());
        std::free(m_buffer);
        m_buffer = grown;
        m_capacity = capacity;
    }

    void Swap(vector_t &other) noexcept
    {
        std::swap(m_buffer, other.m_buffer);
        std::swap(m_size, other.m_size);
        std::swap(m_capacity, other.m_capacity);
    }

private:
    void Destroy() noexcept
    {
        Clear();
        std::free(m_buffer);
    }

    T *m_buffer = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

static_assert(sizeof(vector_t<int>) == 3 * sizeof(void *));

} // namespace kro
