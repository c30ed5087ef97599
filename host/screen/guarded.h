// SPDX-License-Identifier: Apache-2.0
// Runs the body of a call that the view makes: no exception may reach the view.
#pragma once

#include <new>

#include "kro/result.h"

namespace host {

template <typename Body>
kro::result_t Guarded(Body body) noexcept
{
    try {
        return body();
    } catch (const std::bad_alloc &) {
        return kro::kOutOfMemory;
    } catch (...) {
        return kro::kUnspecifiedError;
    }
}

} // namespace host
