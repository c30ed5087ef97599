// SPDX-License-Identifier: Apache-2.0
// The framework's object and tracer interfaces. Slot order is the order of declaration. Nothing here throws.
#pragma once

#include <cstdint>

#include "kro/result.h"

namespace kro {

inline constexpr std::uint32_t kObjectInterfaceId = 0;
inline constexpr std::uint32_t kTracerInterfaceId = 0x6EF3329B;

class IObject
{
public:
    virtual std::uint32_t AddRef() = 0;
    virtual std::uint32_t Release() = 0;
    // Stores the object under `id` in `*object` and adds a reference, or stores null and answers
    // kInterfaceNotSupported.
    virtual result_t QueryInterface(std::uint32_t id, void **object) = 0;

protected:
    ~IObject() = default;
};

class ITracer : public IObject
{
public:
    // With `*text` null: starts a message of `level` with room for `capacity` bytes and stores its text
    // pointer, or answers kUnspecifiedError when the level is above the platform's severity. With `*text`
    // not null: grows that message, keeping its level. On failure the message is freed.
    virtual result_t AllocateMessage(std::uint32_t level, char **text, std::uint64_t capacity) = 0;
    // Ends the line behind `length` bytes, hands it to the platform and frees it.
    virtual result_t CommitMessage(char *text, std::uint64_t length) = 0;

protected:
    ~ITracer() = default;
};

} // namespace kro
