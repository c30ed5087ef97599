// SPDX-License-Identifier: Apache-2.0
// Marks a call as under way, until it ends in any way.
#pragma once

namespace base {

class FlagScope
{
public:
    explicit FlagScope(bool &flag)
        : m_flag(flag)
    {
        m_flag = true;
    }
    ~FlagScope() { m_flag = false; }
    FlagScope(const FlagScope &) = delete;
    FlagScope &operator=(const FlagScope &) = delete;

private:
    bool &m_flag;
};

} // namespace base
