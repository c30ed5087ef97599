// SPDX-License-Identifier: Apache-2.0
#include "volume/token/volume_tokens.h"

#include <algorithm>

namespace token {
namespace {

using volume::Object;
using volume::User;
using volume::UserName;
using volume::Volume;

constexpr std::size_t kSlack = 64; // of an object's JSON text in the header

bool Names(const std::vector<int> &keyslots, int keyslot)
{
    return std::find(keyslots.begin(), keyslots.end(), keyslot) != keyslots.end();
}

UserName OwnerOf(const Volume &volume, const std::vector<int> &keyslots)
{
    for (const User &owner : volume.Users(kOwnerType)) {
        const bool shared = std::any_of(keyslots.begin(), keyslots.end(),
                                        [&](int keyslot) { return Names(owner.keyslots, keyslot); });
        if (shared)
            return owner.name;
    }
    return {};
}

volume::Room RoomFor(const Volume &volume, const Wrapped &wrapped, const User &owner)
{
    std::vector<std::string> objects{EncodeEnrolment(wrapped.enrolment),
                                     volume::EncodeUser(owner, kOwnerType)};
    if (!volume.FindUser(owner.name))
        objects.push_back(volume::EncodeUser({owner.name, {}}));
    volume::Room room{1, static_cast<int>(objects.size()), volume::kKeyslotBytes};
    for (const std::string &object : objects)
        room.bytes += object.size() + kSlack;
    return room;
}

volume::Error WriteOwner(Volume &volume, User *owner)
{
    return volume.WriteObject(volume::EncodeUser(*owner, kOwnerType), &owner->object);
}

bool HasToken(const Volume &volume, const UserName &owner)
{
    const std::vector<VolumeToken> tokens = TokensOf(volume);
    return std::any_of(tokens.begin(), tokens.end(),
                       [&](const VolumeToken &token) { return token.owner == owner; });
}

bool IsEnrolled(const Volume &volume, int keyslot)
{
    const std::vector<Object> objects = volume.Objects(kEnrolmentType);
    return std::any_of(objects.begin(), objects.end(),
                       [&](const Object &object) { return Names(object.keyslots, keyslot); });
}

volume::Error RemoveEnrolmentsWithoutKeyslot(Volume &volume)
{
    volume::Error error = volume::Error::None;
    for (const Object &object : volume.Objects(kEnrolmentType)) {
        if (object.keyslots.empty() && error == volume::Error::None)
            error = volume.RemoveObject(object.number);
    }
    return error;
}

volume::Error RemoveIdleUser(Volume &volume, const UserName &name)
{
    const std::optional<User> user = volume.FindUser(name);
    return user && user->keyslots.empty() && !HasToken(volume, name) ? volume.RemoveUser(name)
                                                                     : volume::Error::None;
}

// The keyslot has its enrolment, so that the token opens the volume.
volume::Error Accept(Volume &volume, User owner)
{
    int user = -1;
    const volume::Error error = volume.FindUser(owner.name)
                                    ? volume::Error::None
                                    : volume.WriteObject(volume::EncodeUser({owner.name, {}}), &user);
    owner.keyslots = {*owner.pending};
    owner.pending.reset();
    return error == volume::Error::None ? WriteOwner(volume, &owner) : error;
}

// What is left of a token whose keyslot is gone. The owner's object goes last: while it is there, this is not
// done.
volume::Error DropObjects(Volume &volume, const User &owner)
{
    volume::Error error = RemoveEnrolmentsWithoutKeyslot(volume);
    if (error == volume::Error::None)
        error = RemoveIdleUser(volume, owner.name);
    return error == volume::Error::None ? volume.RemoveObject(owner.object) : error;
}

volume::Error Drop(Volume &volume, const User &owner)
{
    volume::Error error = volume::Error::None;
    if (owner.pending && volume.IsAnnounced(*owner.pending, volume::KeyCost::ForRandomSecret().ToText()))
        error = volume.RemoveKeyslot(*owner.pending);
    return error == volume::Error::None ? DropObjects(volume, owner) : error;
}

// A token that gets its keyslot. The owner's object announces it; FinishPending makes of it what came about.
class TokenOwner final : public volume::KeyslotOwner
{
public:
    TokenOwner(Volume &volume, const Wrapped &wrapped, const UserName &name)
        : m_volume(volume)
        , m_enrolment(wrapped.enrolment)
        , m_owner{name, {}, {}}
    {
    }

    int Keyslot() const { return m_owner.pending.value_or(-1); }

    volume::Error Announce(int keyslot, const volume::KeyCost &) override
    {
        m_owner.pending = keyslot;
        const volume::Error error = m_object < 0 ? volume::Error::None : m_volume.RemoveObject(m_object);
        return error == volume::Error::None ? WriteOwner(m_volume, &m_owner) : error;
    }
    volume::Error Accept(int keyslot) override
    {
        m_enrolment.keyslots = {keyslot};
        const volume::Error error = m_volume.WriteObject(EncodeEnrolment(m_enrolment), &m_object);
        return error == volume::Error::None ? token::Accept(m_volume, m_owner) : error;
    }
    volume::Error Withdraw() override { return DropObjects(m_volume, m_owner); }

private:
    Volume &m_volume;
    Enrolment m_enrolment;
    User m_owner;
    int m_object = -1; // the enrolment's
};

std::vector<User> Unfinished(const Volume &volume)
{
    std::vector<User> owners = volume.Users(kOwnerType);
    std::erase_if(owners, [](const User &owner) { return !owner.keyslots.empty(); });
    return owners;
}

// The keyslots of tokens whose owner is being removed.
std::vector<int> TokensOfRemoved(const Volume &volume)
{
    std::vector<int> keyslots;
    for (const VolumeToken &token : TokensOf(volume)) {
        const std::optional<User> owner = volume.FindUser(token.owner);
        if (!owner || !owner->removing || volume.CheckRemoval(*owner) != volume::Error::None)
            continue;
        const std::vector<int> usable = volume.UsableKeyslots(token.enrolment.keyslots);
        keyslots.insert(keyslots.end(), usable.begin(), usable.end());
    }
    return keyslots;
}

} // namespace

std::vector<VolumeToken> TokensOf(const Volume &volume)
{
    std::vector<VolumeToken> tokens;
    for (const Object &object : volume.Objects(kEnrolmentType)) {
        if (std::optional<Enrolment> enrolment = DecodeEnrolment(object)) {
            UserName owner = OwnerOf(volume, enrolment->keyslots);
            tokens.push_back({std::move(*enrolment), std::move(owner)});
        }
    }
    return tokens;
}

volume::Error AddToken(Volume &volume, const base::Secret &volumeKey, const Wrapped &wrapped,
                       const UserName &name, int *keyslot)
{
    return volume.Change([&] {
        TokenOwner owner(volume, wrapped, name);
        volume::Error error =
            volume.CheckRoom(RoomFor(volume, wrapped, {name, {}, volume::kMaxKeyslots - 1}));
        if (error == volume::Error::None)
            error =
                volume.AddKeyslot(volumeKey, wrapped.passphrase, volume::KeyCost::ForRandomSecret(), owner);
        *keyslot = owner.Keyslot();
        return error;
    });
}

volume::Error RemoveToken(Volume &volume, int keyslot)
{
    return volume.Change([&] {
        volume::Error error = volume.RemoveKeyslot(keyslot);
        if (error == volume::Error::None)
            error = RemoveEnrolmentsWithoutKeyslot(volume);
        return error == volume::Error::None ? FinishPending(volume) : error;
    });
}

volume::Error RemoveUser(Volume &volume, const UserName &name)
{
    return volume.Change([&] {
        volume::Error error = volume.AnnounceRemoval(name);
        if (error == volume::Error::None)
            error = FinishPending(volume);
        return error == volume::Error::None ? volume.FinishPending() : error;
    });
}

volume::Error FinishPending(Volume &volume)
{
    if (Unfinished(volume).empty() && TokensOfRemoved(volume).empty())
        return volume::Error::None;
    return volume.Change([&] {
        volume::Error error = volume::Error::None;
        for (const User &owner : Unfinished(volume)) {
            const bool enrolled = owner.pending && IsEnrolled(volume, *owner.pending);
            if (error == volume::Error::None)
                error = enrolled ? Accept(volume, owner) : Drop(volume, owner);
        }
        for (const int keyslot : TokensOfRemoved(volume)) {
            if (error == volume::Error::None)
                error = RemoveToken(volume, keyslot);
        }
        return error;
    });
}

} // namespace token
