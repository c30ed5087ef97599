// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/volume.h"

#include <cerrno>

#include <libcryptsetup.h>

#include "volume/luks/mapping.h"

namespace volume {

Error Volume::Activate(const std::string &mapperName, std::uint32_t flags, const base::Secret &volumeKey)
{
    std::uint32_t kept = 0;
    // There is more than one volume key then, and mapping with one of them would show half of the data.
    if (CheckChangeable(m_device) == Error::Reencrypting)
        return Error::Reencrypting;
    if (const int result = crypt_persistent_flags_get(m_device, CRYPT_FLAGS_ACTIVATION, &kept); result < 0)
        return Fault(result);
    const auto activate = [&](std::uint32_t keyring) {
        m_lastDetail.clear();
        return crypt_activate_by_volume_key(m_device, mapperName.c_str(), volumeKey.Data(), volumeKey.Size(),
                                            flags | kept | keyring);
    };
    int result = activate(CRYPT_ACTIVATE_KEYRING_KEY);
    if (result < 0 && result != -EEXIST && result != -EBUSY)
        result = activate(0); // a kernel without keyring
    if (IsActiveAs(mapperName))
        return Error::None;
    if (result == -EEXIST || result == -EBUSY)
        return Error::NameTaken;
    return result < 0 ? Fault(result) : Error::Failed;
}

bool Volume::IsActiveAs(const std::string &mapperName) const
{
    const crypt_status_info status = crypt_status(m_device, mapperName.c_str());
    return (status == CRYPT_ACTIVE || status == CRYPT_BUSY) &&
           IsMappedOver("/sys", mapperName, Uuid(), m_path);
}

Error Volume::CheckMapperName(const std::string &mapperName) const
{
    const crypt_status_info status = crypt_status(m_device, mapperName.c_str());
    if (status == CRYPT_INVALID)
        return Error::NoDeviceMapper;
    return status == CRYPT_INACTIVE || IsActiveAs(mapperName) ? Error::None : Error::NameTaken;
}

} // namespace volume
