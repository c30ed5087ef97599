// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/users.h"

#include <algorithm>

#include "volume/luks/policy.h"

namespace volume {
namespace {

int FirstUserKeyslot(const Header &header)
{
    for (const User &user : UsersOf(header)) {
        const std::vector<int> usable = header.UsableKeyslots(user.keyslots);
        if (!usable.empty())
            return usable.front();
    }
    return -1;
}

} // namespace

std::vector<User> UsersOf(const Header &header, std::string_view type)
{
    std::vector<User> users;
    for (const Object &object : header.Objects(type)) {
        if (std::optional<User> user = DecodeUser(object.json, type)) {
            user->object = object.number;
            users.push_back(std::move(*user));
        }
    }
    return users;
}

std::optional<User> FindUser(const Header &header, const UserName &name)
{
    const std::vector<User> users = UsersOf(header);
    const auto found =
        std::find_if(users.begin(), users.end(), [&](const User &user) { return user.name == name; });
    return found == users.end() ? std::nullopt : std::optional<User>(*found);
}

std::optional<KeyCost> SharedCost(const Header &header)
{
    KeyCost cost;
    const int keyslot = FirstUserKeyslot(header);
    return keyslot >= 0 && KeyCost::OfKeyslot(header.Device(), keyslot, &cost) ? std::optional(cost)
                                                                               : std::nullopt;
}

Error CheckRemoval(const Header &header, const User &user)
{
    return header.UsableKeyslots(user.keyslots).empty() || header.LeavesWayIn(user.keyslots)
               ? Error::None
               : Error::LastWayIn;
}

Error Users::Login(const UserName &name, const base::Secret &password, base::Secret *volumeKey)
{
    const std::optional<User> user = FindUser(m_header, name);
    const std::vector<int> keyslots = user ? m_header.UsableKeyslots(user->keyslots) : std::vector<int>();
    if (keyslots.empty()) {
        const int stranger = FirstUserKeyslot(m_header);
        const Error error = stranger < 0 ? Error::None : m_header.OpenKeyslot(stranger, password, nullptr);
        return error == Error::None ? Error::WrongPassword : error;
    }
    Error error = Error::WrongPassword;
    for (auto keyslot = keyslots.begin(); keyslot != keyslots.end() && error == Error::WrongPassword;
         ++keyslot)
        error = m_header.OpenKeyslot(*keyslot, password, volumeKey);
    return error;
}

Error Users::CheckNewPassword(const UserName &name, const base::Secret &password)
{
    const Policy policy = PolicyOf(m_header);
    if (!IsLongEnough(policy, password))
        return Error::PasswordTooShort;
    if (!policy.notOldPassword || !FindUser(m_header, name))
        return Error::None;
    const Error error = Login(name, password, nullptr);
    if (error == Error::None)
        return Error::PasswordUnchanged;
    return error == Error::WrongPassword ? Error::None : error;
}

} // namespace volume
