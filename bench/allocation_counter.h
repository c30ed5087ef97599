// SPDX-License-Identifier: Apache-2.0
// Counts what a piece of code takes from the heap, by malloc and what rests on it.
#pragma once

#include <cstdint>

namespace allocation_counter {

struct Totals
{
    std::uint64_t count = 0;
    std::uint64_t bytes = 0;
};

void Start();
Totals Stop();

} // namespace allocation_counter
