// SPDX-License-Identifier: Apache-2.0
// What a volume holds, for people and for programs: volume info and user list.
#include "admin/commands.h"

#include <algorithm>
#include <ctime>
#include <iostream>

#include "admin/json_output.h"
#include "admin/table.h"
#include "admin/volume_session.h"
#include "volume/luks/users.h"

namespace admin {
namespace {

using nlohmann::json;
using volume::Header;

constexpr char kTokenType[] = "systemd-pkcs11";
constexpr char kRecoveryType[] = "pba-recovery";

std::string FormatTime(std::int64_t seconds)
{
    const std::time_t time = seconds;
    std::tm utc{};
    char text[32] = "";
    if (gmtime_r(&time, &utc))
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text;
}

json DescribeUsers(const Header &header)
{
    json users = json::array();
    for (const volume::User &user : volume::UsersOf(header)) {
        users.push_back({{"user", user.name.user},
                         {"domain", user.name.domain},
                         {"keyslots", user.keyslots},
                         {"changed", user.changed ? json(FormatTime(*user.changed)) : json()}});
    }
    return users;
}

// What the keyslot is for: the type of the object that names it, else some passphrase of another tool.
std::string PurposeOf(const volume::Keyslot &keyslot, const std::vector<volume::Object> &objects)
{
    if (!keyslot.opensVolume)
        return "unbound";
    const auto named = std::find_if(objects.begin(), objects.end(), [&](const volume::Object &object) {
        return std::count(object.keyslots.begin(), object.keyslots.end(), keyslot.number) > 0;
    });
    if (named == objects.end())
        return "other";
    return named->type == volume::kUserObjectType ? "user"
           : named->type == kTokenType            ? "token"
           : named->type == kRecoveryType         ? "recovery"
                                                  : named->type;
}

json DescribeKeyslots(const Header &header)
{
    const std::vector<volume::Object> objects = header.Objects();
    json keyslots = json::array();
    for (const volume::Keyslot &keyslot : header.Keyslots()) {
        keyslots.push_back({{"number", keyslot.number},
                            {"purpose", PurposeOf(keyslot, objects)},
                            {"cost", keyslot.cost.Describe()}});
    }
    return keyslots;
}

// Members of objects that others write are taken as they come.
json DescribeObjects(const Header &header, const char *type, const char *member, const json &otherwise)
{
    json described = json::array();
    for (const volume::Object &object : header.Objects(type)) {
        const json content = json::parse(object.json, nullptr, false);
        json value = content.is_object() ? content.value(member, otherwise) : otherwise;
        if (value.type() != otherwise.type())
            value = otherwise;
        described.push_back({{"keyslots", object.keyslots}, {member, value}});
    }
    return described;
}

json DescribeVolume(const Header &header)
{
    const volume::Room room = header.RoomLeft();
    return {{"volume", header.Path()},
            {"uuid", header.Uuid()},
            {"users", DescribeUsers(header)},
            {"keyslots", DescribeKeyslots(header)},
            {"tokens", DescribeObjects(header, kTokenType, "pkcs11-uri", "")},
            {"recovery", DescribeObjects(header, kRecoveryType, "used", false)},
            {"room", {{"keyslots", room.keyslots}, {"objects", room.objects}, {"bytes", room.bytes}}}};
}

std::string Join(const json &numbers)
{
    std::string text;
    for (const json &number : numbers)
        text += (text.empty() ? "" : ", ") + number.dump();
    return text.empty() ? "none" : text;
}

void PrintUsers(const json &users)
{
    std::vector<Row> rows;
    for (const json &user : users) {
        const json &changed = user["changed"];
        rows.push_back({user["user"], user["domain"], Join(user["keyslots"]),
                        changed.is_string() ? changed.get<std::string>() : "unknown"});
    }
    PrintTable({"USER", "DOMAIN", "KEYSLOT", "PASSWORD SET"}, rows);
}

void PrintVolume(const json &volume)
{
    const json &room = volume["room"];
    PrintTable({"Volume", volume["volume"]},
               {{"UUID", volume["uuid"]},
                {"Room left", room["keyslots"].dump() + " keyslots, " + room["objects"].dump() +
                                  " objects, " + room["bytes"].dump() + " bytes"}});
    std::cout << '\n';
    PrintUsers(volume["users"]);
    std::vector<Row> rows;
    for (const json &keyslot : volume["keyslots"])
        rows.push_back({keyslot["number"].dump(), keyslot["purpose"], keyslot["cost"]});
    std::cout << '\n';
    PrintTable({"KEYSLOT", "OPENED BY", "COST"}, rows);
    rows.clear();
    for (const json &token : volume["tokens"])
        rows.push_back({"token", Join(token["keyslots"]), token["pkcs11-uri"]});
    for (const json &recovery : volume["recovery"])
        rows.push_back(
            {"recovery", Join(recovery["keyslots"]), recovery["used"] ? "used: renew it" : "not used"});
    if (volume["recovery"].empty())
        rows.push_back({"recovery", "none", "not set up"});
    std::cout << '\n';
    PrintTable({"BESIDES", "KEYSLOT", "WHAT"}, rows);
}

} // namespace

void ListUsers(const UserOptions &options)
{
    const json users = DescribeUsers(*OpenVolume(options.volume));
    if (options.json)
        PrintJson(users);
    else
        PrintUsers(users);
}

void ShowVolume(const VolumeOptions &options)
{
    const json volume = DescribeVolume(*OpenVolume(options.user.volume));
    if (options.user.json)
        PrintJson(volume);
    else
        PrintVolume(volume);
}

} // namespace admin
