// SPDX-License-Identifier: Apache-2.0
#include "volume/token/volume_tokens.h"

#include <algorithm>

#include "volume/luks/users.h"

namespace token {
namespace {

using volume::Header;
using volume::Object;
using volume::User;
using volume::UserName;

constexpr std::size_t kSlack = 64; // of an object's JSON text in the header

bool Names(const std::vector<int> &keyslots, int keyslot)
{
    return std::find(keyslots.begin(), keyslots.end(), keyslot) != keyslots.end();
}

UserName OwnerOf(const Header &header, const std::vector<int> &keyslots)
{
    for (const User &owner : volume::UsersOf(header, kOwnerType)) {
        const bool shared = std::any_of(keyslots.begin(), keyslots.end(),
                                        [&](int keyslot) { return Names(owner.keyslots, keyslot); });
        if (shared)
            return owner.name;
    }
    return {};
}

volume::Room RoomFor(const Header &header, const Wrapped &wrapped, const User &owner)
{
    std::vector<std::string> objects{EncodeEnrolment(wrapped.enrolment),
                                     volume::EncodeUser(owner, kOwnerType)};
    if (!volume::FindUser(header, owner.name))
        objects.push_back(volume::EncodeUser({owner.name, {}}));
    volume::Room room{1, static_cast<int>(objects.size()), volume::kKeyslotBytes};
    for (const std::string &object : objects)
        room.bytes += object.size() + kSlack;
    return room;
}

volume::Error WriteOwner(Header &header, User *owner)
{
    return header.WriteObject(volume::EncodeUser(*owner, kOwnerType), &owner->object);
}

bool HasToken(const Header &header, const UserName &owner)
{
    const std::vector<VolumeToken> tokens = TokensOf(header);
    return std::any_of(tokens.begin(), tokens.end(),
                       [&](const VolumeToken &token) { return token.owner == owner; });
}

bool IsEnrolled(const Header &header, int keyslot)
{
    const std::vector<Object> objects = header.Objects(kEnrolmentType);
    return std::any_of(objects.begin(), objects.end(),
                       [&](const Object &object) { return Names(object.keyslots, keyslot); });
}

volume::Error RemoveEnrolmentsWithoutKeyslot(Header &header)
{
    volume::Error error = volume::Error::None;
    for (const Object &object : header.Objects(kEnrolmentType)) {
        if (object.keyslots.empty() && error == volume::Error::None)
            error = header.RemoveObject(object.number);
    }
    return error;
}

volume::Error RemoveIdleUser(Header &header, const UserName &name)
{
    const std::optional<User> user = volume::FindUser(header, name);
    return user && user->keyslots.empty() && !HasToken(header, name) ? volume::Users(header).Remove(name)
                                                                     : volume::Error::None;
}

// The keyslot has its enrolment, so that the token opens the volume.
volume::Error Accept(Header &header, User owner)
{
    int user = -1;
    const volume::Error error = volume::FindUser(header, owner.name)
                                    ? volume::Error::None
                                    : header.WriteObject(volume::EncodeUser({owner.name, {}}), &user);
    owner.keyslots = {*owner.pending};
    owner.pending.reset();
    return error == volume::Error::None ? WriteOwner(header, &owner) : error;
}

// What is left of a token whose keyslot is gone. The owner's object goes last: while it is there, this is not
// done.
volume::Error DropObjects(Header &header, const User &owner)
{
    volume::Error error = RemoveEnrolmentsWithoutKeyslot(header);
    if (error == volume::Error::None)
        error = RemoveIdleUser(header, owner.name);
    return error == volume::Error::None ? header.RemoveObject(owner.object) : error;
}

volume::Error Drop(Header &header, const User &owner)
{
    volume::Error error = volume::Error::None;
    if (owner.pending && header.IsAnnounced(*owner.pending, volume::KeyCost::ForRandomSecret().ToText()))
        error = header.RemoveKeyslot(*owner.pending);
    return error == volume::Error::None ? DropObjects(header, owner) : error;
}

// A token that gets its keyslot. The owner's object announces it; FinishPending makes of it what came about.
class TokenOwner final : public volume::KeyslotOwner
{
public:
    TokenOwner(Header &header, const Wrapped &wrapped, const UserName &name)
        : m_header(header)
        , m_enrolment(wrapped.enrolment)
        , m_owner{name, {}, {}}
    {
    }

    int Keyslot() const { return m_owner.pending.value_or(-1); }

    volume::Error Announce(int keyslot, const volume::KeyCost &) override
    {
        m_owner.pending = keyslot;
        const volume::Error error = m_object < 0 ? volume::Error::None : m_header.RemoveObject(m_object);
        return error == volume::Error::None ? WriteOwner(m_header, &m_owner) : error;
    }
    volume::Error Accept(int keyslot) override
    {
        m_enrolment.keyslots = {keyslot};
        const volume::Error error = m_header.WriteObject(EncodeEnrolment(m_enrolment), &m_object);
        return error == volume::Error::None ? token::Accept(m_header, m_owner) : error;
    }
    volume::Error Withdraw() override { return DropObjects(m_header, m_owner); }

private:
    Header &m_header;
    Enrolment m_enrolment;
    User m_owner;
    int m_object = -1; // the enrolment's
};

std::vector<User> Unfinished(const Header &header)
{
    std::vector<User> owners = volume::UsersOf(header, kOwnerType);
    std::erase_if(owners, [](const User &owner) { return !owner.keyslots.empty(); });
    return owners;
}

// The keyslots of tokens whose owner is being removed.
std::vector<int> TokensOfRemoved(const Header &header)
{
    std::vector<int> keyslots;
    for (const VolumeToken &token : TokensOf(header)) {
        const std::optional<User> owner = volume::FindUser(header, token.owner);
        if (!owner || !owner->removing || volume::CheckRemoval(header, *owner) != volume::Error::None)
            continue;
        const std::vector<int> usable = header.UsableKeyslots(token.enrolment.keyslots);
        keyslots.insert(keyslots.end(), usable.begin(), usable.end());
    }
    return keyslots;
}

} // namespace

std::vector<VolumeToken> TokensOf(const Header &header)
{
    std::vector<VolumeToken> tokens;
    for (const Object &object : header.Objects(kEnrolmentType)) {
        if (std::optional<Enrolment> enrolment = DecodeEnrolment(object)) {
            UserName owner = OwnerOf(header, enrolment->keyslots);
            tokens.push_back({std::move(*enrolment), std::move(owner)});
        }
    }
    return tokens;
}

volume::Error AddToken(Header &header, const base::Secret &volumeKey, const Wrapped &wrapped,
                       const UserName &name, int *keyslot)
{
    return header.Change([&] {
        TokenOwner owner(header, wrapped, name);
        volume::Error error =
            header.CheckRoom(RoomFor(header, wrapped, {name, {}, volume::kMaxKeyslots - 1}));
        if (error == volume::Error::None)
            error =
                header.AddKeyslot(volumeKey, wrapped.passphrase, volume::KeyCost::ForRandomSecret(), owner);
        *keyslot = owner.Keyslot();
        return error;
    });
}

volume::Error RemoveToken(Header &header, int keyslot)
{
    return header.Change([&] {
        volume::Error error = header.RemoveKeyslot(keyslot);
        if (error == volume::Error::None)
            error = RemoveEnrolmentsWithoutKeyslot(header);
        return error == volume::Error::None ? FinishPending(header) : error;
    });
}

volume::Error RemoveUser(Header &header, const UserName &name)
{
    return header.Change([&] {
        volume::Error error = volume::Users(header).AnnounceRemoval(name);
        if (error == volume::Error::None)
            error = FinishPending(header);
        return error == volume::Error::None ? volume::Users(header).FinishPending() : error;
    });
}

volume::Error FinishPending(Header &header)
{
    if (Unfinished(header).empty() && TokensOfRemoved(header).empty())
        return volume::Error::None;
    return header.Change([&] {
        volume::Error error = volume::Error::None;
        for (const User &owner : Unfinished(header)) {
            const bool enrolled = owner.pending && IsEnrolled(header, *owner.pending);
            if (error == volume::Error::None)
                error = enrolled ? Accept(header, owner) : Drop(header, owner);
        }
        for (const int keyslot : TokensOfRemoved(header)) {
            if (error == volume::Error::None)
                error = RemoveToken(header, keyslot);
        }
        return error;
    });
}

} // namespace token
