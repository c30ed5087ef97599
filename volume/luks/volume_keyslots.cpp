#include "volume/luks/volume.h"

#include <algorithm>

#include <libcryptsetup.h>

namespace volume {
namespace {

// Answers the opened keyslot or a negative errno value.
int OpenVolumeKey(crypt_device *device, int keyslot, const Secret &passphrase, Secret *volumeKey)
{
    const int room = crypt_get_volume_key_size(device);
    Secret key(room > 0 ? static_cast<std::size_t>(room) : 0);
    std::size_t size = key.Capacity();
    const int result =
        crypt_volume_key_get(device, keyslot, key.Buffer(), &size, passphrase.Data(), passphrase.Size());
    if (result < 0)
        return result;
    key.SetSize(size);
    *volumeKey = std::move(key);
    return result;
}

bool Names(const Object &object, int keyslot)
{
    return std::count(object.keyslots.begin(), object.keyslots.end(), keyslot) > 0;
}

} // namespace

// Keyslots that open another key than the volume's ("unbound") let nobody in.
bool Volume::OpensVolume(int keyslot) const
{
    const crypt_keyslot_info info = crypt_keyslot_status(m_device, keyslot);
    return info == CRYPT_SLOT_ACTIVE || info == CRYPT_SLOT_ACTIVE_LAST;
}

// By an object other than the one of the number `besides`.
bool Volume::IsNamed(int keyslot, int besides) const
{
    const std::vector<Object> objects = Objects();
    return std::any_of(objects.begin(), objects.end(), [&](const Object &object) {
        return object.number != besides && Names(object, keyslot);
    });
}

bool Volume::IsAnnounced(int keyslot, int object) const
{
    KeyCost cost;
    return !IsNamed(keyslot, object) && KeyCost::OfKeyslot(m_device, keyslot, &cost) &&
           cost == KeyCost::ForRandomSecret();
}

std::vector<Keyslot> Volume::Keyslots() const
{
    std::vector<Keyslot> keyslots;
    for (int number = 0; number < kMaxKeyslots; ++number) {
        KeyCost cost;
        if (KeyCost::OfKeyslot(m_device, number, &cost))
            keyslots.push_back({number, OpensVolume(number), cost});
    }
    return keyslots;
}

int Volume::FindFreeKeyslot() const
{
    for (int keyslot = 0; keyslot < kMaxKeyslots; ++keyslot) {
        if (crypt_keyslot_status(m_device, keyslot) == CRYPT_SLOT_INACTIVE)
            return keyslot;
    }
    return -1;
}

// A keyslot of a recovery or of a token is behind a secret that no person has in mind.
bool Volume::IsWayIn(int keyslot) const
{
    const std::vector<Object> objects = Objects();
    return OpensVolume(keyslot) && std::none_of(objects.begin(), objects.end(), [&](const Object &object) {
               return object.type != kUserObjectType && Names(object, keyslot);
           });
}

bool Volume::LeavesWayIn(const std::vector<int> &withoutKeyslots) const
{
    for (int keyslot = 0; keyslot < kMaxKeyslots; ++keyslot) {
        if (std::count(withoutKeyslots.begin(), withoutKeyslots.end(), keyslot) == 0 && IsWayIn(keyslot))
            return true;
    }
    return false;
}

Error Volume::OpenKeyslot(int keyslot, const Secret &passphrase, Secret *volumeKey)
{
    KeyCost cost;
    if (!OpensVolume(keyslot))
        return Error::WrongPassword;
    if (KeyCost::OfKeyslot(m_device, keyslot, &cost) && cost.ExceedsMemory())
        return Error::OutOfMemory;
    ++m_derivations;
    const int result = volumeKey ? OpenVolumeKey(m_device, keyslot, passphrase, volumeKey)
                                 : crypt_activate_by_passphrase(m_device, nullptr, keyslot, passphrase.Data(),
                                                                passphrase.Size(), 0);
    return result < 0 ? Fault(result) : Error::None;
}

Error Volume::Authorise(const Secret &passphrase, Secret *volumeKey, const std::vector<int> &except)
{
    Error answer = Error::WrongPassword;
    for (const Keyslot &keyslot : Keyslots()) {
        if (std::count(except.begin(), except.end(), keyslot.number) > 0)
            continue;
        const Error error = OpenKeyslot(keyslot.number, passphrase, volumeKey);
        if (error == Error::None)
            return error;
        if (error != Error::WrongPassword)
            answer = error;
    }
    return answer;
}

Error Volume::StoreKeyslot(int keyslot, const Secret &volumeKey, const Secret &passphrase,
                           const KeyCost &cost)
{
    if (cost.ExceedsMemory())
        return Error::OutOfMemory;
    int result = cost.ApplyTo(m_device);
    if (result >= 0)
        result = crypt_keyslot_add_by_volume_key(m_device, keyslot,
                                                 volumeKey.IsEmpty() ? nullptr : volumeKey.Data(),
                                                 volumeKey.Size(), passphrase.Data(), passphrase.Size());
    if (result < 0)
        return Fault(result);
    const Error error = ProveKeyslot(keyslot, passphrase);
    if (error != Error::None)
        crypt_keyslot_destroy(m_device, keyslot);
    return error;
}

// As the next start will see it.
Error Volume::ProveKeyslot(int keyslot, const Secret &passphrase) const
{
    std::unique_ptr<Volume> fresh;
    Error error = Open(m_path, &fresh);
    if (error == Error::None)
        error = fresh->OpenKeyslot(keyslot, passphrase, nullptr);
    return error == Error::WrongPassword ? Error::NotProven : error;
}

// The library takes a destroyed keyslot out of the objects that name it, in the same write.
Error Volume::DestroyKeyslots(const std::vector<int> &keyslots)
{
    for (int keyslot : keyslots) {
        if (crypt_keyslot_status(m_device, keyslot) == CRYPT_SLOT_INACTIVE)
            continue;
        if (const int result = crypt_keyslot_destroy(m_device, keyslot); result < 0)
            return Fault(result);
    }
    return Error::None;
}

Error Volume::AddKeyslot(const Secret &volumeKey, const Secret &passphrase, const KeyCost &cost, int *keyslot)
{
    return Change([&] {
        *keyslot = FindFreeKeyslot();
        return *keyslot < 0 ? Error::NoSpace : StoreKeyslot(*keyslot, volumeKey, passphrase, cost);
    });
}

Error Volume::RemoveKeyslot(int keyslot)
{
    return Change([&] {
        return IsWayIn(keyslot) && !LeavesWayIn({keyslot}) ? Error::LastWayIn : DestroyKeyslots({keyslot});
    });
}

} // namespace volume
