// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/volume.h"

#include <algorithm>
#include <unistd.h>

namespace volume {

std::vector<User> Volume::Users(std::string_view type) const
{
    std::vector<User> users;
    for (const Object &object : Objects(type)) {
        if (std::optional<User> user = DecodeUser(object.json, type)) {
            user->object = object.number;
            users.push_back(std::move(*user));
        }
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

int Volume::FirstUserKeyslot() const
{
    for (const User &user : Users()) {
        const std::vector<int> usable = UsableKeyslots(user.keyslots);
        if (!usable.empty())
            return usable.front();
    }
    return -1;
}

Error Volume::Login(const UserName &name, const base::Secret &password, base::Secret *volumeKey)
{
    const std::optional<User> user = FindUser(name);
    const std::vector<int> keyslots = user ? UsableKeyslots(user->keyslots) : std::vector<int>();
    if (keyslots.empty()) {
        const int stranger = FirstUserKeyslot();
        const Error error = stranger < 0 ? Error::None : OpenKeyslot(stranger, password, nullptr);
        return error == Error::None ? Error::WrongPassword : error;
    }
    Error error = Error::WrongPassword;
    for (auto keyslot = keyslots.begin(); keyslot != keyslots.end() && error == Error::WrongPassword;
         ++keyslot)
        error = OpenKeyslot(*keyslot, password, volumeKey);
    return error;
}

Error Volume::CheckWritable() const
{
    int file = -1;
    const Error error = OpenForWriting(m_path, &file);
    if (error == Error::None)
        close(file);
    return error == Error::None ? CheckChangeable(m_device) : error;
}

std::optional<KeyCost> Volume::SharedCost() const
{
    KeyCost cost;
    const int keyslot = FirstUserKeyslot();
    return keyslot >= 0 && KeyCost::OfKeyslot(m_device, keyslot, &cost) ? std::optional(cost) : std::nullopt;
}

} // namespace volume
