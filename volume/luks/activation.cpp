// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/activation.h"

#include <cerrno>

#include <libcryptsetup.h>

#include "volume/luks/mapping.h"

namespace volume {

Error Activate(Header &header, const std::string &mapperName, std::uint32_t flags,
               const base::Secret &volumeKey)
{
    std::uint32_t kept = 0;
    // There is more than one volume key then, and mapping with one of them would show half of the data.
    if (CheckChangeable(header.Device()) == Error::Reencrypting)
        return Error::Reencrypting;
    if (const int result = crypt_persistent_flags_get(header.Device(), CRYPT_FLAGS_ACTIVATION, &kept);
        result < 0)
        return FromErrno(result, header.Path());
    const auto activate = [&](std::uint32_t keyring) {
        header.ForgetDetail();
        return crypt_activate_by_volume_key(header.Device(), mapperName.c_str(), volumeKey.Data(),
                                            volumeKey.Size(), flags | kept | keyring);
    };
    int result = activate(CRYPT_ACTIVATE_KEYRING_KEY);
    if (result < 0 && result != -EEXIST && result != -EBUSY)
        result = activate(0); // a kernel without keyring
    if (IsActiveAs(header, mapperName))
        return Error::None;
    if (result == -EEXIST || result == -EBUSY)
        return Error::NameTaken;
    return result < 0 ? FromErrno(result, header.Path()) : Error::Failed;
}

bool IsActiveAs(const Header &header, const std::string &mapperName)
{
    const crypt_status_info status = crypt_status(header.Device(), mapperName.c_str());
    return (status == CRYPT_ACTIVE || status == CRYPT_BUSY) &&
           IsMappedOver("/sys", mapperName, header.Uuid(), header.Path());
}

Error CheckMapperName(const Header &header, const std::string &mapperName)
{
    const crypt_status_info status = crypt_status(header.Device(), mapperName.c_str());
    if (status == CRYPT_INVALID)
        return Error::NoDeviceMapper;
    return status == CRYPT_INACTIVE || IsActiveAs(header, mapperName) ? Error::None : Error::NameTaken;
}

} // namespace volume
