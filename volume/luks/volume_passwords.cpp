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

} // namespace

// Each write to the header may be the last one before a loss of power; Finish knows what each leaves behind.
Error Volume::SetPassword(const User &user, const Secret &volumeKey, const Secret &password,
                          const KeyCost &cost)
{
    User changed = user;
    changed.pending = FindFreeKeyslot();
    if (*changed.pending < 0)
        return Error::NoSpace;
    Error error = StoreUser(&changed);
    if (error != Error::None)
        return error;
    error = StoreKeyslot(*changed.pending, volumeKey, password, cost);
    if (error == Error::None)
        error = AcceptPending(changed);
    if (error == Error::None)
        return DestroyKeyslots(user.keyslots) == Error::None ? Error::None : Error::OldPasswordStays;
    const Error undone = DestroyKeyslots({*changed.pending});
    if (undone == Error::None && user.object < 0)
        return DestroyObject(changed.object) == Error::None ? error : Error::Failed;
    changed.pending.reset();
    return undone == Error::None && StoreUser(&changed) == Error::None ? error : Error::Failed;
}

Error Volume::StoreUser(User *user)
{
    return StoreObject(EncodeUser(*user), &user->object);
}

// Its password is the user's from here on; the keyslots behind it are to go.
Error Volume::AcceptPending(User user)
{
    user.keyslots.insert(user.keyslots.begin(), *user.pending);
    user.pending.reset();
    user.isNew = false;
    user.changed = std::time(nullptr);
    return StoreUser(&user);
}

// A pending keyslot was not proven, so it goes where the user has another one; where not, it is better than
// nothing. One that an object names already, or that does not cost what this library would have given it, is
// somebody else's: another tool may have taken the number since.
Error Volume::Finish(const User &user)
{
    const std::vector<int> usable = UsableKeyslots(user);
    if (!user.pending)
        return usable.size() < 2 ? Error::None : DestroyKeyslots({usable.begin() + 1, usable.end()});
    const bool added = OpensVolume(*user.pending) && !IsNamed(*user.pending);
    if (usable.empty() && added)
        return AcceptPending(user);
    if (usable.empty() && user.isNew)
        return DestroyObject(user.object);
    KeyCost cost;
    if (added && KeyCost::OfKeyslot(m_device, *user.pending, &cost) && SharedCost() == cost) {
        if (const Error error = DestroyKeyslots({*user.pending}); error != Error::None)
            return error;
    }
    User former = user;
    former.pending.reset();
    return StoreUser(&former);
}

bool Volume::IsUnfinished(const User &user) const
{
    return user.pending || UsableKeyslots(user).size() > 1;
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
    return any ? Change([this] { return FinishAll(); }) : Error::None;
}

Error Volume::CheckNewUser(const UserName &name) const
{
    return FindUser(name) ? Error::UserExists
                          : CheckRoom({1, 1, kKeyslotBytes + EncodeUser(NewUser(name)).size()});
}

Error Volume::AddUser(const UserName &name, const Secret &volumeKey, const Secret &password,
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
    return UsableKeyslots(user).empty() || LeavesWayIn(user.keyslots) ? Error::None : Error::LastWayIn;
}

Error Volume::RemoveUser(const UserName &name)
{
    return Change([&] {
        if (const Error error = FinishAll(); error != Error::None)
            return error;
        const std::optional<User> user = FindUser(name);
        if (!user)
            return Error::NoUser;
        if (const Error error = CheckRemoval(*user); error != Error::None)
            return error;
        const Error error = DestroyKeyslots(user->keyslots);
        return error == Error::None ? DestroyObject(user->object) : error;
    });
}

Error Volume::ReplacePassword(const UserName &name, const Secret &volumeKey, const Secret &password,
                              const KeyCost &cost, WhenFull whenFull)
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
Error Volume::DropKeyslots(User *user, const Secret &volumeKey, const KeyCost &cost)
{
    if (crypt_volume_key_verify(m_device, volumeKey.Data(), volumeKey.Size()) < 0)
        return Error::WrongPassword;
    if (cost.ExceedsMemory())
        return Error::OutOfMemory;
    const Error error = DestroyKeyslots(user->keyslots);
    user->keyslots.clear();
    return error;
}

Error Volume::CheckNewPassword(const UserName &name, const Secret &password)
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
