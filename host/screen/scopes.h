// What has to be taken back however a call ends.
#pragma once

#include "pbe/application.h"

namespace host {

// The wait cursor, while a key is derived.
class BusyScope
{
public:
    BusyScope() { PbeSetBusy(true); }
    ~BusyScope() { PbeSetBusy(false); }
    BusyScope(const BusyScope &) = delete;
    BusyScope &operator=(const BusyScope &) = delete;
};

// Marks a call as under way.
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

} // namespace host
