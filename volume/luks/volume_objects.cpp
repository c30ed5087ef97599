// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/volume.h"

#include <libcryptsetup.h>

namespace volume {

std::vector<Object> Volume::Objects(std::string_view type) const
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

Error Volume::WriteObject(const std::string &json, int *number)
{
    return Change([&] { return m_writer.lock()->StoreObject(json, number); });
}

Error Volume::RemoveObject(int number)
{
    return Change([&] { return m_writer.lock()->DestroyObject(number); });
}

Room Volume::RoomLeft() const
{
    return MeasureRoom(m_device);
}

Error Volume::CheckRoom(const Room &needed) const
{
    const Room whole{needed.keyslots + kReserve.keyslots, needed.objects + kReserve.objects,
                     needed.bytes + kReserve.bytes};
    return Fits(whole, RoomLeft()) ? Error::None : Error::NoSpace;
}

Policy Volume::GetPolicy() const
{
    for (const Object &object : Objects(kPolicyObjectType)) {
        if (const std::optional<Policy> policy = DecodePolicy(object.json))
            return *policy;
    }
    return {};
}

Error Volume::SetPolicy(const Policy &policy)
{
    return Change([&] {
        const std::string json = EncodePolicy(policy);
        const std::vector<Object> former = Objects(kPolicyObjectType);
        int number = former.empty() ? -1 : former.front().number;
        const Error error = former.empty() ? CheckRoom({0, 1, json.size()}) : Error::None;
        return error == Error::None ? WriteObject(json, &number) : error;
    });
}

} // namespace volume
