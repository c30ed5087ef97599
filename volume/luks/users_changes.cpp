// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/users.h"

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
    PasswordOwner(Header &header, const User &user, std::int64_t date)
        : m_header(header)
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
    Error Withdraw() override { return m_isNew ? m_header.RemoveObject(m_user.object) : Store(m_user); }

private:
    Error Store(const User &user) { return m_header.WriteObject(EncodeUser(user), &m_user.object); }

    Header &m_header;
    User m_user; // as it was before
    std::int64_t m_date;
    bool m_isNew;
};

bool IsUnfinished(const Header &header, const User &user)
{
    return user.pending || user.removing || !header.FormerKeyslots(user.keyslots, user.object).empty();
}

} // namespace

Error Users::SetPassword(const User &user, const base::Secret &volumeKey, const base::Secret &password,
                         const KeyCost &cost)
{
    const std::vector<int> former = m_header.OwnKeyslots(user.keyslots, user.object);
    PasswordOwner owner(m_header, user, Date());
    if (const Error error = m_header.AddKeyslot(volumeKey, password, cost, owner); error != Error::None)
        return error;
    return m_header.DestroyKeyslots(former) == Error::None ? Error::None : Error::OldPasswordStays;
}

std::int64_t Users::Date() const
{
    return m_date.value_or(std::time(nullptr));
}

// A pending keyslot was not proven, so it goes where the user has another one; where not, it is better than
// nothing.
Error Users::Finish(const User &user)
{
    if (!user.pending)
        return m_header.DestroyKeyslots(m_header.FormerKeyslots(user.keyslots, user.object));
    const bool added = m_header.IsAnnounced(*user.pending, user.pendingCost);
    const bool helpless = m_header.UsableKeyslots(user.keyslots).empty();
    int object = user.object;
    if (helpless && added)
        return m_header.WriteObject(EncodeUser(WithNewKeyslot(user, *user.pending, Date())), &object);
    if (added) {
        if (const Error error = m_header.DestroyKeyslots({*user.pending}); error != Error::None)
            return error;
    }
    User former = user;
    former.pending.reset();
    return helpless && user.isNew ? m_header.RemoveObject(object)
                                  : m_header.WriteObject(EncodeUser(former), &object);
}

// Another program may have taken the other ways in since it was announced.
Error Users::FinishRemoval(User user)
{
    if (CheckRemoval(m_header, user) != Error::None) {
        user.removing = false;
        return m_header.WriteObject(EncodeUser(user), &user.object);
    }
    const Error error = m_header.DestroyKeyslots(m_header.OwnKeyslots(user.keyslots, user.object));
    return error == Error::None ? m_header.RemoveObject(user.object) : error;
}

Error Users::FinishRemovals()
{
    for (const User &user : UsersOf(m_header)) {
        if (const Error error = user.removing ? FinishRemoval(user) : Error::None; error != Error::None)
            return error;
    }
    return Error::None;
}

Error Users::FinishAll()
{
    for (const User &user : UsersOf(m_header)) {
        if (const Error error = Finish(user); error != Error::None)
            return error;
    }
    return Error::None;
}

Error Users::FinishPending()
{
    const std::vector<User> users = UsersOf(m_header);
    const bool any = std::any_of(users.begin(), users.end(),
                                 [this](const User &user) { return IsUnfinished(m_header, user); });
    if (!any)
        return Error::None;
    return m_header.Change([this] {
        const Error error = FinishAll();
        return error == Error::None ? FinishRemovals() : error;
    });
}

Error CheckNewUser(const Header &header, const UserName &name)
{
    return FindUser(header, name)
               ? Error::UserExists
               : header.CheckRoom({1, 1, kKeyslotBytes + EncodeUser(NewUser(name)).size()});
}

Error Users::Add(const UserName &name, const base::Secret &volumeKey, const base::Secret &password,
                 const KeyCost &cost)
{
    return m_header.Change([&] {
        if (const Error error = FinishAll(); error != Error::None)
            return error;
        if (const Error error = CheckNewUser(m_header, name); error != Error::None)
            return error;
        return SetPassword(NewUser(name), volumeKey, password, SharedCost(m_header).value_or(cost));
    });
}

Error Users::AnnounceRemoval(const UserName &name)
{
    return m_header.Change([&] {
        if (const Error error = FinishAll(); error != Error::None)
            return error;
        std::optional<User> user = FindUser(m_header, name);
        if (!user)
            return Error::NoUser;
        if (const Error error = CheckRemoval(m_header, *user); error != Error::None)
            return error;
        user->removing = true;
        return m_header.WriteObject(EncodeUser(*user), &user->object);
    });
}

Error Users::Remove(const UserName &name)
{
    return m_header.Change([&] {
        const Error error = AnnounceRemoval(name);
        return error == Error::None ? FinishRemovals() : error;
    });
}

Error Users::ReplacePassword(const UserName &name, const base::Secret &volumeKey,
                             const base::Secret &password, const KeyCost &cost, WhenFull whenFull)
{
    return m_header.Change([&] {
        if (const Error error = FinishAll(); error != Error::None)
            return error;
        std::optional<User> user = FindUser(m_header, name);
        if (!user)
            return Error::NoUser;
        const KeyCost shared = SharedCost(m_header).value_or(cost);
        if (whenFull == WhenFull::DropOld && m_header.RoomLeft().keyslots < 1) {
            if (const Error error = DropKeyslots(&*user, volumeKey, shared); error != Error::None)
                return error;
        }
        return SetPassword(*user, volumeKey, password, shared);
    });
}

// What can be known to fail afterwards is looked at before.
Error Users::DropKeyslots(User *user, const base::Secret &volumeKey, const KeyCost &cost)
{
    if (crypt_volume_key_verify(m_header.Device(), volumeKey.Data(), volumeKey.Size()) < 0)
        return Error::WrongPassword;
    if (cost.ExceedsMemory())
        return Error::OutOfMemory;
    const Error error = m_header.DestroyKeyslots(m_header.OwnKeyslots(user->keyslots, user->object));
    user->keyslots.clear();
    return error;
}

} // namespace volume
