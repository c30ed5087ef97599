#include "volume_tokens.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace token {
namespace {

using nlohmann::json;
using volume::Object;
using volume::UserName;
using volume::Volume;

constexpr std::size_t kSlack = 64; // of an object's JSON text in the header

std::string EncodeOwner(const UserName &owner, int keyslot)
{
    return json{{"type", kOwnerType},
                {"keyslots", {std::to_string(keyslot)}},
                {"domain", owner.domain},
                {"user", owner.user}}
        .dump();
}

UserName DecodeOwner(const Object &object)
{
    const json members = json::parse(object.json, nullptr, false);
    const auto text = [&](const char *name) {
        const auto member = members.find(name);
        return member != members.end() && member->is_string() ? member->get<std::string>() : std::string();
    };
    return members.is_object() ? UserName{text("domain"), text("user")} : UserName{};
}

bool Names(const std::vector<int> &keyslots, int keyslot)
{
    return std::find(keyslots.begin(), keyslots.end(), keyslot) != keyslots.end();
}

UserName OwnerOf(const Volume &volume, const std::vector<int> &keyslots)
{
    for (const Object &object : volume.Objects(kOwnerType)) {
        const bool shared = std::any_of(keyslots.begin(), keyslots.end(),
                                        [&](int keyslot) { return Names(object.keyslots, keyslot); });
        if (shared)
            return DecodeOwner(object);
    }
    return {};
}

// The objects of a new token, besides its keyslot.
std::vector<std::string> MakeObjects(const Volume &volume, const Wrapped &wrapped, const UserName &owner,
                                     int keyslot)
{
    Enrolment enrolment = wrapped.enrolment;
    enrolment.keyslots = {keyslot};
    std::vector<std::string> objects{EncodeEnrolment(enrolment), EncodeOwner(owner, keyslot)};
    if (!volume.FindUser(owner))
        objects.push_back(volume::EncodeUser({owner, {}}));
    return objects;
}

volume::Room RoomFor(const std::vector<std::string> &objects)
{
    volume::Room room{1, static_cast<int>(objects.size()), volume::kKeyslotBytes};
    for (const std::string &object : objects)
        room.bytes += object.size() + kSlack;
    return room;
}

volume::Error WriteAll(Volume &volume, const std::vector<std::string> &objects, std::vector<int> *written)
{
    for (const std::string &object : objects) {
        int number = -1;
        if (const volume::Error error = volume.WriteObject(object, &number); error != volume::Error::None)
            return error;
        written->push_back(number);
    }
    return volume::Error::None;
}

bool HasToken(const Volume &volume, const UserName &owner)
{
    const std::vector<VolumeToken> tokens = TokensOf(volume);
    return std::any_of(tokens.begin(), tokens.end(),
                       [&](const VolumeToken &token) { return token.owner == owner; });
}

volume::Error RemoveObjectsWithoutKeyslot(Volume &volume, const char *type)
{
    volume::Error error = volume::Error::None;
    for (const Object &object : volume.Objects(type)) {
        if (object.keyslots.empty() && error == volume::Error::None)
            error = volume.RemoveObject(object.number);
    }
    return error;
}

volume::Error RemoveIdleUser(Volume &volume, const UserName &name)
{
    const std::optional<volume::User> user = volume.FindUser(name);
    return user && user->keyslots.empty() && !HasToken(volume, name) ? volume.RemoveUser(name)
                                                                     : volume::Error::None;
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

volume::Error AddToken(Volume &volume, const volume::Secret &volumeKey, const Wrapped &wrapped,
                       const UserName &owner, int *keyslot)
{
    constexpr int kWidest = volume::kMaxKeyslots - 1;
    volume::Error error = volume.CheckRoom(RoomFor(MakeObjects(volume, wrapped, owner, kWidest)));
    if (error == volume::Error::None)
        error = volume.AddKeyslot(volumeKey, wrapped.passphrase, volume::KeyCost::ForRandomSecret(), keyslot);
    if (error != volume::Error::None)
        return error;
    std::vector<int> written;
    error = WriteAll(volume, MakeObjects(volume, wrapped, owner, *keyslot), &written);
    if (error == volume::Error::None)
        return error;
    // The first fault is the one to tell.
    for (const int object : written)
        static_cast<void>(volume.RemoveObject(object));
    static_cast<void>(volume.RemoveKeyslot(*keyslot));
    return error;
}

volume::Error RemoveToken(Volume &volume, int keyslot)
{
    const UserName owner = OwnerOf(volume, {keyslot});
    volume::Error error = volume.RemoveKeyslot(keyslot);
    for (const char *type : {kEnrolmentType, kOwnerType}) {
        if (error == volume::Error::None)
            error = RemoveObjectsWithoutKeyslot(volume, type);
    }
    return error == volume::Error::None && !owner.user.empty() ? RemoveIdleUser(volume, owner) : error;
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

} // namespace token
