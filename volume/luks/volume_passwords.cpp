// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/volume.h"

#include <algorithm>
#include <ctime>

#include <libcryptsetup.h>

namespace volume {
namespace {

User NewUser(const UserName &name)
{
    User user;
    user.name = name;
    user.isNew = true;
    return user;
}

// Its password is the user's from here on; the keyslots behind it are to go.
User WithNewKeyslot(User user, int keyslot, std::int64_t date)
{
    user.keyslots.insert(user.keyslots.begin(), keyslot);
    user.pending.reset();
    user.isNew = false;
    user.changed = date;
    return user;
}

// Who gets a keyslot for a password. Each write to the header may be the last one before a loss of power;
// Finish knows what each leaves behind.
class PasswordOwner final : public KeyslotOwner
{
public:
    PasswordOwner(Volume &volume, const User &user, std::int64_t date)
        : m_volume(volume)
        , m_user(user)
        , m_date(date)
        , m_isNew(user.object < 0)
    {
    }

    Error Announce(int keyslot, const KeyCost &cost) override
    {
        User announced = m_user;
        announced.pending = keyslot;
        announced.pendingCost = cost.ToText();
        return Store(announced);
    }
    Error Accept(int keyslot) override { return Store(WithNewKeyslot(m_user, keyslot, m_date)); }
    Error Withdraw() override { return m_isNew ? m_volume.RemoveObject(m_user.object) : Store(m_user); }

private:
    Error Store(const User &user) { return m_volume.WriteObject(EncodeUser(user), &m_user.object); }

    Volume &m_volume;
    User m_user; // as it was before
    std::int64_t m_date;
    bool m_isNew;
};

} // namespace

Error Volume::SetPassword(const User &user, const base::Secret &volumeKey, const base::Secret &password,
                          const KeyCost &cost)
{
    const std::vector<int> former = OwnKeyslots(user.keyslots, user.object);
    PasswordOwner owner(*this, user, Date());
    if (const Error error = AddKeyslot(volumeKey, password, cost, owner); error != Error::None)
        return error;
    return DestroyKeyslots(former) == Error::None ? Error::None : Error::OldPasswordStays;
}

std::int64_t Volume::Date() const
{
    return m_date.value_or(std::time(nullptr));
}

// A pending keyslot was not proven, so it goes where the user has another one; where not, it is better than
// nothing.
Error Volume::Finish(const User &user)
{
    if (!user.pending)
        return DestroyKeyslots(FormerKeyslots(user.keyslots, user.object));
    const bool added = IsAnnounced(*user.pending, user.pendingCost);
    const bool helpless = UsableKeyslots(user.keyslots).empty();
    int object = user.object;
    if (helpless && added)
        return WriteObject(EncodeUser(WithNewKeyslot(user, *user.pending, Date())), &object);
    if (added) {
        if (const Error error = DestroyKeyslots({*user.pending}); error != Error::None)
            return error;
    }
    User former = user;
    former.pending.reset();
    return helpless && user.isNew ? RemoveObject(object) : WriteObject(EncodeUser(former), &object);
}

// Another program may have taken the other ways in since it was announced.
Error Volume::FinishRemoval(User user)
{
    if (CheckRemoval(user) != Error::None) {
        user.removing = false;
        return WriteObject(EncodeUser(user), &user.object);
    }
    const Error error = DestroyKeyslots(OwnKeyslots(user.keyslots, user.object));
    return error == Error::None ? RemoveObject(user.object) : error;
}

Error Volume::FinishRemovals()
{
    for (const User &user : Users()) {
        if (const Error error = user.removing ? FinishRemoval(user) : Error::None; error != Error::None)
            return error;
    }
    return Error::None;
}

bool Volume::IsUnfinished(const User &user) const
{
    return user.pending || user.removing || !FormerKeyslots(user.keyslots, user.object).empty();
}

Error Volume::FinishAll()
{
    for (const User &user : Users()) {
        if (const Error error = Finish(user); error != Error::None)
            return error;
    }
    return Error::None;
}

Error Volume::FinishPending()
{
    const std::vector<User> users = Users();
    const bool any =
        std::any_of(users.begin(), users.end(), [this](const User &user) { return IsUnfinished(user); });
    if (!any)
        return Error::None;
    return Change([this] {
        const Error error = FinishAll();
        return error == Error::None ? FinishRemovals() : error;
    });
}

Error Volume::CheckNewUser(const UserName &name) const
{
    return FindUser(name) ? Error::UserExists
                          : CheckRoom({1, 1, kKeyslotBytes + EncodeUser(NewUser(name)).size()});
}

Error Volume::AddUser(const UserName &name, const base::Secret &volumeKey, const base::Secret &password,
                      const KeyCost &cost)
{
    return Change([&] {
        if (const Error error = FinishAll(); error != Error::None)
            return error;
        if (const Error error = CheckNewUser(name); error != Error::None)
            return error;
        return SetPassword(NewUser(name), volumeKey, password, SharedCost().value_or(cost));
    });
}

Error Volume::CheckRemoval(const User &user) const
{
    return UsableKeyslots(user.keyslots).empty() || LeavesWayIn(user.keyslots) ? Error::None
                                                                               : Error::LastWayIn;
}

Error Volume::AnnounceRemoval(const UserName &name)
{
    return Change([&] {
        if (const Error error = FinishAll(); error != Error::None)
            return error;
        std::optional<User> user = FindUser(name);
        if (!user)
            return Error::NoUser;
        if (const Error error = CheckRemoval(*user); error != Error::None)
            return error;
        user->removing = true;
        return WriteObject(EncodeUser(*user), &user->object);
    });
}

Error Volume::RemoveUser(const UserName &name)
{
    return Change([&] {
        const Error error = AnnounceRemoval(name);
        return error == Error::None ? FinishRemovals() : error;
    });
}

Error Volume::ReplacePassword(const UserName &name, const base::Secret &volumeKey,
                              const base::Secret &password, const KeyCost &cost, WhenFull whenFull)
{
    return Change([&] {
        if (const Error error = FinishAll(); error != Error::None)
            return error;
        std::optional<User> user = FindUser(name);
        if (!user)
            return Error::NoUser;
        const KeyCost shared = SharedCost().value_or(cost);
        if (whenFull == WhenFull::DropOld && RoomLeft().keyslots < 1) {
            if (const Error error = DropKeyslots(&*user, volumeKey, shared); error != Error::None)
                return error;
        }
        return SetPassword(*user, volumeKey, password, shared);
    });
}

// What can be known to fail afterwards is looked at before.
Error Volume::DropKeyslots(User *user, const base::Secret &volumeKey, const KeyCost &cost)
{
    if (crypt_volume_key_verify(m_device, volumeKey.Data(), volumeKey.Size()) < 0)
        return Error::WrongPassword;
    if (cost.ExceedsMemory())
        return Error::OutOfMemory;
    const Error error = DestroyKeyslots(OwnKeyslots(user->keyslots, user->object));
    user->keyslots.clear();
    return error;
}

Error Volume::CheckNewPassword(const UserName &name, const base::Secret &password)
{
    const Policy policy = GetPolicy();
    if (!IsLongEnough(policy, password))
        return Error::PasswordTooShort;
    if (!policy.notOldPassword || !FindUser(name))
        return Error::None;
    const Error error = Login(name, password, nullptr);
    if (error == Error::None)
        return Error::PasswordUnchanged;
    return error == Error::WrongPassword ? Error::None : error;
}

} // namespace volume
