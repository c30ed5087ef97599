// SPDX-License-Identifier: Apache-2.0
// Says at a terminal what takes so long, once it has taken a second.
#pragma once

#include <thread>

namespace admin {

class Progress
{
public:
    // `what` is a literal, as in "pba_admin: what ...". It is not said once this object has ended.
    explicit Progress(const char *what);

private:
    std::jthread m_thread;
};

} // namespace admin
