// SPDX-License-Identifier: Apache-2.0
// Objects of a header that somebody else may have written: what is accepted as a user stays the same user
// when it is written again.
#include <cstdlib>

#include "volume/luks/user.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto user = volume::DecodeUser({reinterpret_cast<const char *>(data), size});
    if (!user)
        return 0;
    const auto again = volume::DecodeUser(volume::EncodeUser(*user));
    if (!again || !(again->name == user->name) || again->keyslots != user->keyslots)
        std::abort();
    return 0;
}
