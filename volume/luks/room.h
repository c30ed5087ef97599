// SPDX-License-Identifier: Apache-2.0
// How much a LUKS2 header still takes. libcryptsetup says only that something did not fit, after the fact.
#pragma once

#include <cstddef>

struct crypt_device;

namespace volume {

struct Room
{
    int keyslots = 0; // free numbers for which there is also a free area
    int objects = 0;
    std::size_t bytes = 0; // of JSON text
};

// What a keyslot takes of the JSON text, generously.
inline constexpr std::size_t kKeyslotBytes = 400;
// Stays free, so that passwords can always be changed.
inline constexpr Room kReserve{1, 1, 1024};

Room MeasureRoom(crypt_device *device);

inline bool Fits(const Room &needed, const Room &left)
{
    return needed.keyslots <= left.keyslots && needed.objects <= left.objects && needed.bytes <= left.bytes;
}

} // namespace volume
