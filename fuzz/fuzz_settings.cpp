// SPDX-License-Identifier: Apache-2.0
// Settings from any bytes: decoding never fails otherwise than by its result, and what it has read is what
// the encoder writes.
#include <cstdlib>

#include "settings_format/settings_decoder.h"
#include "settings_format/settings_encoder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    pba::SettingsStream stream{{data, data + size}, 0};
    pba::ConstantSettingsRecord record;
    if (pba::DecodeSettings(&stream, &record) != kro::kOk)
        return 0;
    const std::string encoded = pba::EncodeSettings(record);
    pba::SettingsStream again{{encoded.begin(), encoded.end()}, 0};
    pba::ConstantSettingsRecord same;
    if (pba::DecodeSettings(&again, &same) != kro::kOk || !(same == record))
        std::abort();
    return 0;
}
