// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/policy.h"

#include <nlohmann/json.hpp>

#include "base/text.h"
#include "volume/luks/header.h"

namespace volume {
namespace {

using nlohmann::json;

constexpr std::int64_t kSecondsPerDay = 24 * 60 * 60;

void ReadNumber(const json &object, const char *name, std::uint32_t maximum, std::uint32_t *number)
{
    const auto member = object.find(name);
    if (member != object.end() && member->is_number_unsigned() && member->get<std::uint64_t>() <= maximum)
        *number = member->get<std::uint32_t>();
}

void ReadDate(const json &object, const char *name, std::int64_t *date)
{
    constexpr std::uint64_t kMaxDate = std::uint64_t{1} << 40;
    const auto member = object.find(name);
    if (member != object.end() && member->is_number_unsigned() && member->get<std::uint64_t>() <= kMaxDate)
        *date = member->get<std::int64_t>();
}

void ReadFlag(const json &object, const char *name, bool *flag)
{
    const auto member = object.find(name);
    if (member != object.end() && member->is_boolean())
        *flag = member->get<bool>();
}

} // namespace

std::optional<Policy> DecodePolicy(std::string_view text)
{
    const json object = json::parse(text, nullptr, false);
    if (!object.is_object() || object.value("type", json()) != kPolicyObjectType)
        return std::nullopt;
    Policy policy;
    ReadNumber(object, "minimumLength", kMaxMinimumLength, &policy.minimumLength);
    ReadFlag(object, "notOldPassword", &policy.notOldPassword);
    ReadNumber(object, "expiryDays", kMaxExpiryDays, &policy.expiryDays);
    ReadFlag(object, "autologonAllowed", &policy.autologonAllowed);
    ReadNumber(object, "freeAttempts", kMaxFreeAttempts, &policy.freeAttempts);
    ReadNumber(object, "delaySeconds", kMaxDelaySeconds, &policy.delaySeconds);
    ReadDate(object, "clockReset", &policy.clockReset);
    return policy;
}

std::string EncodePolicy(const Policy &policy)
{
    json object{{"type", kPolicyObjectType},
                {"keyslots", json::array()},
                {"minimumLength", policy.minimumLength},
                {"notOldPassword", policy.notOldPassword},
                {"expiryDays", policy.expiryDays},
                {"autologonAllowed", policy.autologonAllowed},
                {"freeAttempts", policy.freeAttempts},
                {"delaySeconds", policy.delaySeconds}};
    if (policy.clockReset > 0)
        object["clockReset"] = policy.clockReset;
    return object.dump();
}

Policy PolicyOf(const Header &header)
{
    for (const Object &object : header.Objects(kPolicyObjectType)) {
        if (const std::optional<Policy> policy = DecodePolicy(object.json))
            return *policy;
    }
    return {};
}

Error SetPolicy(Header &header, const Policy &policy)
{
    return header.Change([&] {
        const std::string json = EncodePolicy(policy);
        const std::vector<Object> former = header.Objects(kPolicyObjectType);
        int number = former.empty() ? -1 : former.front().number;
        const Error error = former.empty() ? header.CheckRoom({0, 1, json.size()}) : Error::None;
        return error == Error::None ? header.WriteObject(json, &number) : error;
    });
}

bool IsLongEnough(const Policy &policy, const base::Secret &password)
{
    return base::Utf16Length(password.View()).value_or(0) >= policy.minimumLength;
}

bool HasExpired(const Policy &policy, const User &user, std::int64_t now)
{
    return policy.expiryDays > 0 &&
           (!user.changed || now - *user.changed >= policy.expiryDays * kSecondsPerDay);
}

} // namespace volume
