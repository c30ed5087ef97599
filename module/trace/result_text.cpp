// SPDX-License-Identifier: Apache-2.0
#include "module/trace/result_text.h"

#include <algorithm>
#include <iterator>

namespace kro {

namespace {

struct Row
{
    std::uint32_t code;
    const char16_t *text;
};

// In ascending order.
constexpr Row kFrameworkTexts[] = {
    {0x00000000, u"No error"},
    {0x00000001, u"False"},
    {0x80000001, u"Interface not supported"},
    {0x80000040, u"Unexpected"},
    {0x80000041, u"Out of memory"},
    {0x80000042, u"Not supported"},
    {0x80000043, u"Not implemented"},
    {0x80000044, u"Buffer too small"},
    {0x80000045, u"Access denied"},
    {0x80000046, u"Invalid argument"},
    {0x8000004A, u"Not matched"},
    {0x8000004B, u"Unspecified error"},
    {0x8000004C, u"Not found"},
    {0x8000004D, u"Found"},
    {0x8000004F, u"Locked"},
    {0x80000050, u"Not locked"},
    {0x80000051, u"Operation cancelled"},
    {0x80000057, u"Method not found"},
    {0x80000058, u"Stack is empty"},
    {0x80000059, u"Media error"},
    {0x8000005A, u"Invalid signature"},
    {0x8000005B, u"Invalid version"},
    {0x8000005C, u"Invalid size"},
    {0x8000005D, u"Invalid type"},
    {0x8000005E, u"Invalid index"},
    {0x80000062, u"Out of space"},
    {0x80000063, u"Not ready"},
    {0x80000064, u"Less than"},
    {0x80000065, u"More than"},
    {0x80000066, u"Prohibited"},
    {0x80000067, u"Already done"},
    {0x80000068, u"Need reboot"},
    {0x80000069, u"Bases corrupted"},
    {0x8000006A, u"Invalid state"},
    {0x8000006B, u"Not initialized"},
    {0x8000006C, u"Insufficient resources"},
    {0x80000180, u"Property not found"},
    {0x80000221, u"Operation timeout"},
};

// Facility 1, in the order of the codes.
constexpr const char16_t *kPlatformTexts[] = {
    u"Unspecified platform error", u"Invalid handle",    u"File not found", u"Path not found",
    u"Sharing violation",          u"Already exists",    u"Wait abandoned", u"Symbol not found",
    u"Sxs is incorrect",           u"Invalid path name",
};

constexpr std::uint32_t kFacilityMask = 0x7FFF0000;
constexpr std::uint32_t kPlatformFacility = 0x00010000;
constexpr std::uint32_t kFirstPlatformCode = 0x80010100;

static_assert(std::ranges::is_sorted(kFrameworkTexts, {}, &Row::code));

const char16_t *GetPlatformText(std::uint32_t code)
{
    const std::uint32_t index = code - kFirstPlatformCode;
    return index < std::size(kPlatformTexts) ? kPlatformTexts[index] : u"Unknown platform result code";
}

const char16_t *GetFrameworkText(std::uint32_t code)
{
    const Row *row = std::ranges::lower_bound(kFrameworkTexts, code, {}, &Row::code);
    return row != std::end(kFrameworkTexts) && row->code == code ? row->text : u"Unknown result code";
}

} // namespace

// The sign is no part of the facility: a success code of the platform's facility has no framework text.
const char16_t *GetResultCodeText(std::uint32_t code)
{
    return (code & kFacilityMask) == kPlatformFacility ? GetPlatformText(code) : GetFrameworkText(code);
}

wstring_t ResultCodeToString(std::uint32_t code)
{
    return wstring_t(GetResultCodeText(code));
}

} // namespace kro
