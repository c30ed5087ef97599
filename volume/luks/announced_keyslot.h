// SPDX-License-Identifier: Apache-2.0
// How a keyslot gets into the header: its object announces it, then it is added and proven, then the object
// accepts it. So a loss of power, or a write that fails, leaves no keyslot behind that nobody can name.
#pragma once

#include "volume/luks/error.h"
#include "volume/luks/key_cost.h"

namespace volume {

// Whose keyslot it is. The header is written by these calls only as far as they say; they belong inside a
// change and are made by Header::AddKeyslot.
class KeyslotOwner
{
public:
    virtual ~KeyslotOwner() = default;

    // Stores an object that says which keyslot is about to be added, and of what cost. May be repeated.
    [[nodiscard]] virtual Error Announce(int keyslot, const KeyCost &cost) = 0;
    // The keyslot is there and proven: stores the object that names it. May throw.
    [[nodiscard]] virtual Error Accept(int keyslot) = 0;
    // The keyslot is gone: stores the object as it was before, or removes it.
    [[nodiscard]] virtual Error Withdraw() = 0;
};

} // namespace volume
