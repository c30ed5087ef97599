#include "volume.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include <libcryptsetup.h>

namespace volume {
namespace {

// Keyslots that open another key than the volume's ("unbound") let nobody in.
bool OpensVolume(crypt_device *device, int keyslot)
{
    const crypt_keyslot_info info = crypt_keyslot_status(device, keyslot);
    return info == CRYPT_SLOT_ACTIVE || info == CRYPT_SLOT_ACTIVE_LAST;
}

std::optional<User> ReadUser(crypt_device *device, int token)
{
    const char *json = nullptr;
    if (crypt_token_json_get(device, token, &json) < 0 || !json)
        return std::nullopt;
    return DecodeUser(json);
}

Secret RoomForVolumeKey(crypt_device *device)
{
    const int size = crypt_get_volume_key_size(device);
    return Secret(size > 0 ? static_cast<std::size_t>(size) : 0);
}

// Answers the opened keyslot or a negative errno value.
int OpenVolumeKey(crypt_device *device, int keyslot, const Secret &passphrase, Secret *volumeKey)
{
    Secret key = RoomForVolumeKey(device);
    std::size_t size = key.Capacity();
    const int result =
        crypt_volume_key_get(device, keyslot, key.Buffer(), &size, passphrase.Data(), passphrase.Size());
    if (result < 0)
        return result;
    key.SetSize(size);
    *volumeKey = std::move(key);
    return result;
}

} // namespace

std::vector<User> Volume::Users() const
{
    std::vector<User> users;
    const int tokens = crypt_token_max(CRYPT_LUKS2);
    for (int token = 0; token < tokens; ++token) {
        if (std::optional<User> user = ReadUser(m_device, token))
            users.push_back(std::move(*user));
    }
    return users;
}

std::optional<User> Volume::FindUser(const UserName &name) const
{
    const std::vector<User> users = Users();
    const auto found =
        std::find_if(users.begin(), users.end(), [&](const User &user) { return user.name == name; });
    return found == users.end() ? std::nullopt : std::optional<User>(*found);
}

std::vector<int> Volume::UsableKeyslots(const User &user) const
{
    std::vector<int> usable;
    std::copy_if(user.keyslots.begin(), user.keyslots.end(), std::back_inserter(usable),
                 [this](int keyslot) { return OpensVolume(m_device, keyslot); });
    return usable;
}

int Volume::FirstUserKeyslot() const
{
    for (const User &user : Users()) {
        const std::vector<int> usable = UsableKeyslots(user);
        if (!usable.empty())
            return usable.front();
    }
    return -1;
}

Error Volume::Login(const UserName &name, const Secret &password, Secret *volumeKey)
{
    const std::optional<User> user = FindUser(name);
    const std::vector<int> keyslots = user ? UsableKeyslots(*user) : std::vector<int>();
    if (keyslots.empty()) {
        const int stranger = FirstUserKeyslot();
        Secret discarded;
        const Error error =
            stranger < 0 ? Error::None : TryKeyslot(stranger, password, volumeKey ? &discarded : nullptr);
        return error == Error::None ? Error::WrongPassword : error;
    }
    Error error = Error::WrongPassword;
    for (auto keyslot = keyslots.begin(); keyslot != keyslots.end() && error == Error::WrongPassword;
         ++keyslot)
        error = TryKeyslot(*keyslot, password, volumeKey);
    return error;
}

Error Volume::TryKeyslot(int keyslot, const Secret &password, Secret *volumeKey)
{
    KeyCost cost;
    if (KeyCost::OfKeyslot(m_device, keyslot, &cost) && cost.ExceedsMemory())
        return Error::OutOfMemory;
    ++m_derivations;
    const int result = volumeKey ? OpenVolumeKey(m_device, keyslot, password, volumeKey)
                                 : crypt_activate_by_passphrase(m_device, nullptr, keyslot, password.Data(),
                                                                password.Size(), 0);
    return result < 0 ? Fault(result) : Error::None;
}

Error Volume::Authorise(const Secret &passphrase, Secret *volumeKey)
{
    const int result = OpenVolumeKey(m_device, CRYPT_ANY_SLOT, passphrase, volumeKey);
    return result < 0 ? Fault(result) : Error::None;
}

Error Volume::CheckWritable() const
{
    const int file = open(m_path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    if (file >= 0)
        close(file);
    else if (errno == EACCES || errno == EPERM || errno == EROFS)
        return Error::ReadOnly;
    return file >= 0 ? Error::None : Fault(-errno);
}

std::optional<KeyCost> Volume::SharedCost() const
{
    KeyCost cost;
    const int keyslot = FirstUserKeyslot();
    return keyslot >= 0 && KeyCost::OfKeyslot(m_device, keyslot, &cost) ? std::optional(cost) : std::nullopt;
}

int Volume::FindFreeKeyslot() const
{
    for (int keyslot = 0; keyslot < kMaxKeyslots; ++keyslot) {
        if (crypt_keyslot_status(m_device, keyslot) == CRYPT_SLOT_INACTIVE)
            return keyslot;
    }
    return -1;
}

Error Volume::AddUser(const UserName &name, const Secret &volumeKey, const Secret &password,
                      const KeyCost &cost)
{
    if (FindUser(name))
        return Error::UserExists;
    const int keyslot = FindFreeKeyslot();
    if (keyslot < 0)
        return Error::NoSpace;
    int result = cost.ApplyTo(m_device);
    if (result >= 0)
        result = crypt_keyslot_add_by_volume_key(m_device, keyslot,
                                                 volumeKey.IsEmpty() ? nullptr : volumeKey.Data(),
                                                 volumeKey.Size(), password.Data(), password.Size());
    if (result < 0)
        return Fault(result);
    const Error error = AttachUser(name, keyslot);
    if (error != Error::None)
        crypt_keyslot_destroy(m_device, keyslot);
    return error;
}

Error Volume::AttachUser(const UserName &name, int keyslot)
{
    const int result = crypt_token_json_set(m_device, CRYPT_ANY_TOKEN, EncodeUser({name, {keyslot}}).c_str());
    return result < 0 ? Fault(result) : Error::None;
}

} // namespace volume
