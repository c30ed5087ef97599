// SPDX-License-Identifier: Apache-2.0
// A byte string that must not be left behind: a passphrase or a volume key. It lives in locked pages of its
// own, left out of core dumps, that are wiped when it ends; can be moved but not copied, and never grows,
// since growing would leave a copy. Where the system allows no locking it is kept unlocked: nobody is shut
// out.
#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

namespace base {

class Secret
{
public:
    Secret() noexcept = default;
    // Room for `capacity` bytes; throws std::bad_alloc.
    explicit Secret(std::size_t capacity);
    Secret(Secret &&other) noexcept { Swap(other); }
    Secret &operator=(Secret &&other) noexcept;
    ~Secret() { Wipe(); }

    // Never null. Not zero-terminated.
    const char *Data() const noexcept { return m_data ? m_data : ""; }
    std::size_t Size() const noexcept { return m_size; }
    std::size_t Capacity() const noexcept { return m_capacity; }
    bool IsEmpty() const noexcept { return m_size == 0; }
    // Valid as long as this secret; make no copy of it.
    std::string_view View() const noexcept { return {Data(), m_size}; }

    // False when there is no room left.
    bool Append(char byte) noexcept;
    // For calls that fill a buffer themselves: the room, and how much of it they have used.
    char *Buffer() noexcept { return m_data; }
    void SetSize(std::size_t size) noexcept { m_size = size; }

    void Wipe() noexcept;

private:
    void Swap(Secret &other) noexcept;

    char *m_data = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

// In locked memory as well.
Secret CopyOf(std::string_view bytes);

} // namespace base
