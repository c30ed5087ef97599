#include "volume/luks/policy.h"

#include <nlohmann/json.hpp>

#include "base/text.h"

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
    return policy;
}

std::string EncodePolicy(const Policy &policy)
{
    return json{{"type", kPolicyObjectType},
                {"keyslots", json::array()},
                {"minimumLength", policy.minimumLength},
                {"notOldPassword", policy.notOldPassword},
                {"expiryDays", policy.expiryDays},
                {"autologonAllowed", policy.autologonAllowed},
                {"freeAttempts", policy.freeAttempts},
                {"delaySeconds", policy.delaySeconds}}
        .dump();
}

bool IsLongEnough(const Policy &policy, const Secret &password)
{
    return Utf16Length(password.View()).value_or(0) >= policy.minimumLength;
}

bool HasExpired(const Policy &policy, const User &user, std::int64_t now)
{
    return policy.expiryDays > 0 &&
           (!user.changed || now - *user.changed >= policy.expiryDays * kSecondsPerDay);
}

} // namespace volume
