// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/header_writer.h"

#include <cstdint>

#include <libcryptsetup.h>

namespace volume {
namespace {

constexpr std::uint32_t kReencryption =
    CRYPT_REQUIREMENT_OFFLINE_REENCRYPT | CRYPT_REQUIREMENT_ONLINE_REENCRYPT;

int FindFreeObject(crypt_device *device)
{
    int number = 0;
    while (number < crypt_token_max(CRYPT_LUKS2) &&
           crypt_token_status(device, number, nullptr) != CRYPT_TOKEN_INACTIVE)
        ++number;
    return number < crypt_token_max(CRYPT_LUKS2) ? number : -1;
}

} // namespace

Error CheckChangeable(crypt_device *device)
{
    std::uint32_t requirements = 0;
    if (crypt_persistent_flags_get(device, CRYPT_FLAGS_REQUIREMENTS, &requirements) < 0)
        return Error::ForeignRequirement;
    if (requirements & kReencryption || crypt_reencrypt_status(device, nullptr) != CRYPT_REENCRYPT_NONE)
        return Error::Reencrypting;
    return requirements == 0 ? Error::None : Error::ForeignRequirement;
}

bool OpensVolume(crypt_device *device, int keyslot)
{
    const crypt_keyslot_info info = crypt_keyslot_status(device, keyslot);
    return info == CRYPT_SLOT_ACTIVE || info == CRYPT_SLOT_ACTIVE_LAST;
}

// The library does not look whether what it wrote has reached the disk.
template <typename Write>
Error HeaderWriter::Put(Write write)
{
    if (const Error error = CheckChangeable(m_device); error != Error::None)
        return error;
    if (const int result = write(); result < 0)
        return FromErrno(result, m_path);
    const int result = m_lock.Flush();
    return result < 0 ? FromErrno(result, m_path) : Error::None;
}

Error HeaderWriter::StoreObject(const std::string &json, int *number)
{
    if (*number < 0)
        *number = FindFreeObject(m_device);
    return *number < 0 ? Error::NoSpace
                       : Put([&] { return crypt_token_json_set(m_device, *number, json.c_str()); });
}

Error HeaderWriter::DestroyObject(int number)
{
    if (number < 0 || crypt_token_status(m_device, number, nullptr) == CRYPT_TOKEN_INACTIVE)
        return Error::None;
    return Put([&] { return crypt_token_json_set(m_device, number, nullptr); });
}

Error HeaderWriter::AddKeyslot(int keyslot, const base::Secret &volumeKey, const base::Secret &passphrase,
                               const KeyCost &cost)
{
    if (cost.ExceedsMemory())
        return Error::OutOfMemory;
    const char *key = volumeKey.IsEmpty() ? nullptr : volumeKey.Data();
    return Put([&] {
        const int result = cost.ApplyTo(m_device);
        return result < 0 ? result
                          : crypt_keyslot_add_by_volume_key(m_device, keyslot, key, volumeKey.Size(),
                                                            passphrase.Data(), passphrase.Size());
    });
}

Error HeaderWriter::DestroyKeyslot(int keyslot)
{
    if (crypt_keyslot_status(m_device, keyslot) == CRYPT_SLOT_INACTIVE)
        return Error::None;
    return OpensVolume(m_device, keyslot) ? Put([&] { return crypt_keyslot_destroy(m_device, keyslot); })
                                          : Error::ForeignKeyslot;
}

} // namespace volume
