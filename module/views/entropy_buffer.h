// SPDX-License-Identifier: Apache-2.0
// The bytes gathered so far, of the number that a host asked for.
#pragma once

#include <cstdint>
#include <new>

#include "kro/vector.h"

namespace pba {

class EntropyBuffer
{
public:
    // Nobody presses that many keys. A larger size is not even tried, for the system might grant it at first
    // and end the process when it is used.
    static constexpr std::uint32_t kLimit = 1 << 20;

    // Throws std::bad_alloc when the size cannot be had.
    explicit EntropyBuffer(std::uint32_t size)
    {
        if (size > kLimit)
            throw std::bad_alloc();
        m_bytes.Resize(size);
    }
    ~EntropyBuffer() { Wipe(); }
    EntropyBuffer(const EntropyBuffer &) = delete;
    EntropyBuffer &operator=(const EntropyBuffer &) = delete;

    // A full buffer takes no more.
    void Add(std::uint8_t byte)
    {
        if (!IsFull())
            m_bytes[m_gathered++] = byte;
    }
    bool IsFull() const { return m_gathered == m_bytes.Size(); }
    std::size_t Gathered() const { return m_gathered; }
    const kro::vector_t<std::uint8_t> &Bytes() const { return m_bytes; }

    // Overwrites the bytes with zeros, in a way that the compiler may not drop.
    void Wipe()
    {
        volatile std::uint8_t *cell = m_bytes.Data();
        for (std::size_t left = m_bytes.Size(); left > 0; --left)
            *cell++ = 0;
    }

private:
    kro::vector_t<std::uint8_t> m_bytes;
    std::size_t m_gathered = 0;
};

} // namespace pba
