// SPDX-License-Identifier: Apache-2.0
// Result codes: the 32-bit values by which every fallible operation of the view, its host and its
// platform answers. 0 is success, 1 the "false" success; a set top bit (a negative value) is a failure.
// The English text of each code comes from GetResultCodeText in the module and is what support staff see.
#pragma once

#include <cstdint>

namespace kro {

using result_t = std::int32_t;

constexpr result_t MakeResult(std::uint32_t code)
{
    return static_cast<result_t>(code);
}

constexpr bool Failed(result_t result)
{
    return result < 0;
}

inline constexpr result_t kOk = 0;
inline constexpr result_t kFalse = 1;
inline constexpr result_t kInterfaceNotSupported = MakeResult(0x80000001);
inline constexpr result_t kUnexpected = MakeResult(0x80000040);
inline constexpr result_t kOutOfMemory = MakeResult(0x80000041);
inline constexpr result_t kNotSupported = MakeResult(0x80000042);
inline constexpr result_t kNotImplemented = MakeResult(0x80000043);
inline constexpr result_t kBufferTooSmall = MakeResult(0x80000044);
inline constexpr result_t kAccessDenied = MakeResult(0x80000045);
inline constexpr result_t kInvalidArgument = MakeResult(0x80000046);
inline constexpr result_t kNotMatched = MakeResult(0x8000004A);
inline constexpr result_t kUnspecifiedError = MakeResult(0x8000004B);
inline constexpr result_t kNotFound = MakeResult(0x8000004C);
inline constexpr result_t kFound = MakeResult(0x8000004D);
inline constexpr result_t kLocked = MakeResult(0x8000004F);
inline constexpr result_t kNotLocked = MakeResult(0x80000050);
inline constexpr result_t kCancelled = MakeResult(0x80000051);
inline constexpr result_t kInvalidVersion = MakeResult(0x8000005B);
inline constexpr result_t kNotReady = MakeResult(0x80000063);
inline constexpr result_t kProhibited = MakeResult(0x80000066);
inline constexpr result_t kInvalidState = MakeResult(0x8000006A);
inline constexpr result_t kNotInitialized = MakeResult(0x8000006B);

} // namespace kro
