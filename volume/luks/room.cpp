// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/room.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <libcryptsetup.h>
#include <nlohmann/json.hpp>

#include "volume/luks/user.h"

namespace volume {
namespace {

using nlohmann::json;
using Range = std::pair<std::uint64_t, std::uint64_t>; // offset and size, in bytes

constexpr std::uint64_t kBinaryHeaderBytes = 4096;
constexpr std::uint64_t kAreaAlignment = 4096;
constexpr std::uint64_t kStripes = 4000; // a keyslot's area holds the key that many times over

// LUKS2 writes numbers of 64 bits as text.
std::uint64_t Number(const json &object, const char *name)
{
    const auto member = object.find(name);
    return member != object.end() && member->is_string()
               ? std::strtoull(member->get_ref<const std::string &>().c_str(), nullptr, 10)
               : 0;
}

std::vector<Range> UsedAreas(const json &header)
{
    std::vector<Range> areas;
    const json keyslots = header.value("keyslots", json::object());
    for (const json &keyslot : keyslots) {
        const json area = keyslot.value("area", json::object());
        areas.emplace_back(Number(area, "offset"), Number(area, "size"));
    }
    std::sort(areas.begin(), areas.end());
    return areas;
}

// How many areas of `size` bytes fit between the used ones.
std::uint64_t CountFreeAreas(std::vector<Range> used, const Range &whole, std::uint64_t size)
{
    std::uint64_t count = 0;
    std::uint64_t free = whole.first;
    used.emplace_back(whole.first + whole.second, 0);
    for (const auto &[offset, length] : used) {
        if (offset > free)
            count += (offset - free) / size;
        free = std::max(free, offset + length);
    }
    return count;
}

int CountFreeAreas(crypt_device *device, const json &header, std::uint64_t metadataBytes,
                   std::uint64_t keyslotsBytes)
{
    const int keyBytes = crypt_get_volume_key_size(device);
    if (keyBytes <= 0)
        return 0;
    const std::uint64_t material = static_cast<std::uint64_t>(keyBytes) * kStripes;
    const std::uint64_t size = (material + kAreaAlignment - 1) / kAreaAlignment * kAreaAlignment;
    const std::uint64_t count = CountFreeAreas(UsedAreas(header), {2 * metadataBytes, keyslotsBytes}, size);
    return static_cast<int>(std::min<std::uint64_t>(count, kMaxKeyslots));
}

} // namespace

Room MeasureRoom(crypt_device *device)
{
    Room room;
    const char *text = nullptr;
    std::uint64_t metadataBytes = 0;
    std::uint64_t keyslotsBytes = 0;
    if (crypt_get_metadata_size(device, &metadataBytes, &keyslotsBytes) < 0 ||
        crypt_dump_json(device, &text, 0) < 0 || !text)
        return room;
    const json header = json::parse(text, nullptr, false);
    if (!header.is_object())
        return room;
    const std::size_t used = header.dump().size() + 1; // on the disk it stands without the blanks
    const std::size_t whole = metadataBytes - kBinaryHeaderBytes;
    room.bytes = used < whole ? whole - used : 0;
    for (int keyslot = 0; keyslot < kMaxKeyslots; ++keyslot)
        room.keyslots += crypt_keyslot_status(device, keyslot) == CRYPT_SLOT_INACTIVE;
    room.keyslots = std::min(room.keyslots, CountFreeAreas(device, header, metadataBytes, keyslotsBytes));
    for (int object = 0; object < crypt_token_max(CRYPT_LUKS2); ++object)
        room.objects += crypt_token_status(device, object, nullptr) == CRYPT_TOKEN_INACTIVE;
    return room;
}

} // namespace volume
