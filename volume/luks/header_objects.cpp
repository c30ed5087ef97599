// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/header.h"

#include <libcryptsetup.h>

#include "volume/luks/user.h"

namespace volume {

std::vector<Object> Header::Objects(std::string_view type) const
{
    std::vector<Object> objects;
    for (int number = 0; number < crypt_token_max(CRYPT_LUKS2); ++number) {
        const char *text = nullptr;
        const char *itsType = nullptr;
        crypt_token_status(m_device, number, &itsType);
        if (!itsType || (!type.empty() && type != itsType))
            continue;
        Object object{number, itsType, {}, {}};
        if (crypt_token_json_get(m_device, number, &text) < 0 || !text)
            continue;
        object.json = text;
        for (int keyslot = 0; keyslot < kMaxKeyslots; ++keyslot) {
            if (crypt_token_is_assigned(m_device, number, keyslot) == 0)
                object.keyslots.push_back(keyslot);
        }
        objects.push_back(std::move(object));
    }
    return objects;
}

Error Header::WriteObject(const std::string &json, int *number)
{
    return Change([&] { return m_writer.lock()->StoreObject(json, number); });
}

Error Header::RemoveObject(int number)
{
    return Change([&] { return m_writer.lock()->DestroyObject(number); });
}

Room Header::RoomLeft() const
{
    return MeasureRoom(m_device);
}

Error Header::CheckRoom(const Room &needed) const
{
    const Room whole{needed.keyslots + kReserve.keyslots, needed.objects + kReserve.objects,
                     needed.bytes + kReserve.bytes};
    return Fits(whole, RoomLeft()) ? Error::None : Error::NoSpace;
}

} // namespace volume
