// SPDX-License-Identifier: Apache-2.0
#include "base/secret.h"

#include <new>

#include <sodium.h>

namespace base {

Secret::Secret(std::size_t capacity)
    : m_capacity(capacity)
{
    if (sodium_init() >= 0)
        m_data = static_cast<char *>(sodium_malloc(capacity));
    if (!m_data)
        throw std::bad_alloc();
}

Secret &Secret::operator=(Secret &&other) noexcept
{
    Secret taken(std::move(other));
    Swap(taken);
    return *this;
}

bool Secret::Append(char byte) noexcept
{
    if (m_size == m_capacity)
        return false;
    m_data[m_size++] = byte;
    return true;
}

void Secret::Wipe() noexcept
{
    sodium_free(m_data); // wipes first
    m_data = nullptr;
    m_size = 0;
    m_capacity = 0;
}

void Secret::Swap(Secret &other) noexcept
{
    std::swap(m_data, other.m_data);
    std::swap(m_size, other.m_size);
    std::swap(m_capacity, other.m_capacity);
}

Secret CopyOf(std::string_view bytes)
{
    if (bytes.empty())
        return {};
    Secret copy(bytes.size());
    bytes.copy(copy.Buffer(), bytes.size());
    copy.SetSize(bytes.size());
    return copy;
}

} // namespace base
