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

// What is left of a token that does not open the volume. The owner's object goes last: while it is there,
// this is not done.
volume::Error Drop(Volume &volume, const User &owner)
{
    volume::Error error = volume::Error::None;
    if (owner.pending && volume.IsAnnounced(*owner.pending, owner.object))
        error = volume.RemoveKeyslot(*owner.pending);
    if (error == volume::Error::None)
        error = RemoveEnrolmentsWithoutKeyslot(volume);
    if (error == volume::Error::None)
        error = RemoveIdleUser(volume, owner.name);
    return error == volume::Error::None ? volume.RemoveObject(owner.object) : error;
}

volume::Error AddEnrolledKeyslot(Volume &volume, const volume::Secret &volumeKey, const Wrapped &wrapped,
                                 int *keyslot)
{
    const volume::Error error =
        volume.AddKeyslot(volumeKey, wrapped.passphrase, volume::KeyCost::ForRandomSecret(), keyslot);
    if (error != volume::Error::None)
        return error;
    Enrolment enrolment = wrapped.enrolment;
    enrolment.keyslots = {*keyslot};
    int object = -1;
    return volume.WriteObject(EncodeEnrolment(enrolment), &object);
}

std::vector<User> Unfinished(const Volume &volume)
{
    std::vector<User> owners = volume.Users(kOwnerType);
    std::erase_if(owners, [](const User &owner) { return !owner.keyslots.empty(); });
    return owners;
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

// The owner's object announces the keyslot; FinishPending makes of it what came about.
volume::Error AddToken(Volume &volume, const volume::Secret &volumeKey, const Wrapped &wrapped,
                       const UserName &name, int *keyslot)
{
    return volume.Change([&] {
        User owner{name, {}, volume.FindFreeKeyslot()};
        volume::Error error = volume.CheckRoom(RoomFor(volume, wrapped, owner));
        if (error == volume::Error::None)
            error = WriteOwner(volume, &owner);
        if (error != volume::Error::None)
            return error;
        error = AddEnrolledKeyslot(volume, volumeKey, wrapped, keyslot);
        const volume::Error finished = FinishPending(volume);
        return error == volume::Error::None ? finished : error;
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
    for (const VolumeToken &token : TokensOf(volume)) {
        if (!(token.owner == name))
            continue;
        for (const int keyslot : token.enrolment.keyslots) {
            if (const volume::Error error = RemoveToken(volume, keyslot); error != volume::Error::None)
                return error;
        }
    }
    // The last token of a user without a password has taken the user along.
    return volume.FindUser(name) ? volume.RemoveUser(name) : volume::Error::None;
}

volume::Error FinishPending(Volume &volume)
{
    if (Unfinished(volume).empty())
        return volume::Error::None;
    return volume.Change([&] {
        volume::Error error = volume::Error::None;
        for (const User &owner : Unfinished(volume)) {
            const bool enrolled = owner.pending && IsEnrolled(volume, *owner.pending);
            if (error == volume::Error::None)
                error = enrolled ? Accept(volume, owner) : Drop(volume, owner);
        }
        return error;
    });
}

} // namespace token
