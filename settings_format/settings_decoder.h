// SPDX-License-Identifier: Apache-2.0
// Decodes settings.bin. The file may be damaged or hostile: nothing is read beyond its end, and no more
// memory is taken than a fixed multiple of its size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kro/result.h"
#include "settings_format/settings_record.h"

namespace pba {

inline constexpr std::uint16_t kSettingsVersion = 1;

// The content of the file and how far it has been read.
struct SettingsStream
{
    std::vector<std::uint8_t> bytes;
    std::size_t cursor = 0;
};

// Reads the record from the start of the stream. Bytes behind it are ignored. kInvalidVersion,
// kBufferTooSmall or kOutOfMemory when it fails; the fields read until then keep their new values.
kro::result_t DecodeSettings(SettingsStream *stream, ConstantSettingsRecord *record);

} // namespace pba
