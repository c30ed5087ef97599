// SPDX-License-Identifier: Apache-2.0
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

} // namespace host
