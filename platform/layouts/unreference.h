// SPDX-License-Identifier: Apache-2.0
// How owning pointers give back the objects of a C library that counts references.
#pragma once

namespace layouts {

template <auto Unref>
struct Unreference
{
    template <typename T>
    void operator()(T *object) const
    {
        Unref(object);
    }
};

} // namespace layouts
