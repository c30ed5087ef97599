// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/user.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include <nlohmann/json.hpp>

#include "volume/luks/name_comparison.h"
#include "base/text.h"

namespace volume {
namespace {

using nlohmann::json;

std::optional<std::string> TextMember(const json &object, const char *name)
{
    const auto member = object.find(name);
    if (member == object.end() || !member->is_string())
        return std::nullopt;
    return member->get<std::string>();
}

std::optional<int> DecodeKeyslot(const json &element)
{
    if (!element.is_string())
        return std::nullopt;
    const auto &text = element.get_ref<const std::string &>();
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 0 || number >= kMaxKeyslots)
        return std::nullopt;
    return number;
}

std::optional<std::int64_t> DecodeTime(const json &object)
{
    const auto member = object.find("changed");
    if (member == object.end() || !member->is_number_unsigned() ||
        member->get<std::uint64_t>() > std::numeric_limits<std::int64_t>::max())
        return std::nullopt;
    return member->get<std::int64_t>();
}

std::optional<std::vector<int>> DecodeKeyslots(const json &object)
{
    const auto member = object.find("keyslots");
    if (member == object.end() || !member->is_array())
        return std::nullopt;
    std::vector<int> keyslots;
    for (const json &element : *member) {
        const std::optional<int> number = DecodeKeyslot(element);
        if (!number)
            return std::nullopt;
        if (std::find(keyslots.begin(), keyslots.end(), *number) == keyslots.end())
            keyslots.push_back(*number);
    }
    return keyslots;
}

bool HasBlankAtEnd(std::string_view text)
{
    return text.starts_with(' ') || text.ends_with(' ');
}

} // namespace

bool UserName::operator==(const UserName &other) const
{
    return FoldName(domain) == FoldName(other.domain) && FoldName(user) == FoldName(other.user);
}

const char *FindNameFault(const UserName &name)
{
    if (name.user.empty())
        return "the user name is empty";
    if (name.user.size() > kMaxNameBytes || name.domain.size() > kMaxNameBytes)
        return "user name and domain may have at most 256 bytes each";
    if (!base::Utf16Length(name.user) || !base::Utf16Length(name.domain))
        return "user name and domain must be UTF-8";
    return nullptr;
}

// Two users must not look alike where they are listed.
const char *FindNewNameFault(const UserName &name)
{
    if (const char *fault = FindNameFault(name))
        return fault;
    if (!base::IsPlain(name.user) || !base::IsPlain(name.domain))
        return "user name and domain may not contain control characters or others that do not show";
    if (HasBlankAtEnd(name.user) || HasBlankAtEnd(name.domain))
        return "user name and domain may not begin or end with a blank";
    return nullptr;
}

std::optional<User> DecodeUser(std::string_view text, std::string_view type)
{
    const json object = json::parse(text, nullptr, false);
    if (!object.is_object() || TextMember(object, "type") != type)
        return std::nullopt;
    const std::optional<std::string> domain = TextMember(object, "domain");
    const std::optional<std::string> user = TextMember(object, "user");
    std::optional<std::vector<int>> keyslots = DecodeKeyslots(object);
    if (!domain || !user || user->empty() || !keyslots)
        return std::nullopt;
    const auto pending = object.find("pending");
    User decoded{{*domain, *user}, std::move(*keyslots)};
    decoded.pending = pending == object.end() ? std::nullopt : DecodeKeyslot(*pending);
    decoded.isNew = object.value("new", json()) == true;
    decoded.changed = DecodeTime(object);
    decoded.pendingCost = TextMember(object, "cost").value_or("");
    decoded.removing = object.value("removing", json()) == true;
    return decoded;
}

std::string EncodeUser(const User &user, std::string_view type)
{
    json keyslots = json::array();
    for (int keyslot : user.keyslots)
        keyslots.push_back(std::to_string(keyslot));
    json object{
        {"type", type}, {"keyslots", keyslots}, {"domain", user.name.domain}, {"user", user.name.user}};
    if (user.pending)
        object["pending"] = std::to_string(*user.pending);
    if (user.pending && !user.pendingCost.empty())
        object["cost"] = user.pendingCost;
    if (user.isNew)
        object["new"] = true;
    if (user.changed)
        object["changed"] = *user.changed;
    if (user.removing)
        object["removing"] = true;
    return object.dump();
}

} // namespace volume
