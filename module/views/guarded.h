// SPDX-License-Identifier: Apache-2.0
// No exception crosses the boundary: every call of the host that may need memory is run by this.
#pragma once

#include <new>
#include <type_traits>

#include "kro/result.h"

namespace pba {

template <typename Request>
kro::result_t Guarded(Request request)
{
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Request>>)
            request();
        else
            return request();
        return kro::kOk;
    } catch (const std::bad_alloc &) {
        return kro::kOutOfMemory;
    }
}

} // namespace pba
