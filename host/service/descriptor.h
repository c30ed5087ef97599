// SPDX-License-Identifier: Apache-2.0
// Closes what it holds.
#pragma once

#include <cerrno>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace host {

class Descriptor
{
public:
    // Of a call that answers -1 where it fails; then throws std::system_error.
    static Descriptor Checked(int number)
    {
        if (number < 0)
            throw std::system_error(errno, std::generic_category(), "no descriptor");
        return Descriptor(number);
    }
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    Descriptor(Descriptor &&other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {
    }
    Descriptor &operator=(Descriptor &&) = delete;
    ~Descriptor()
    {
        if (m_number >= 0)
            close(m_number);
    }

    int Number() const { return m_number; }

private:
    int m_number;
};

} // namespace host
