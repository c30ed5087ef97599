// SPDX-License-Identifier: Apache-2.0
#include "host/service/login_state.h"

#include <nlohmann/json.hpp>

namespace host {
namespace {

using nlohmann::json;

// Far enough that a count does not run over, and a time no difference to another.
constexpr std::uint32_t kMaxFailures = 1'000'000;
constexpr std::uint64_t kMaxTime = std::uint64_t{1} << 40;

std::uint64_t Number(const json &object, const char *name, std::uint64_t most)
{
    const auto member = object.find(name);
    if (member == object.end() || !member->is_number_unsigned())
        return 0;
    return std::min(member->get<std::uint64_t>(), most);
}

std::optional<std::string> Text(const json &object, const char *name)
{
    const auto member = object.find(name);
    return member != object.end() && member->is_string() ? std::optional(member->get<std::string>())
                                                         : std::nullopt;
}

} // namespace

std::optional<LoginState> DecodeLoginState(std::string_view text)
{
    const json object = json::parse(text, nullptr, false);
    if (!object.is_object() || Text(object, "type") != kStateObjectType)
        return std::nullopt;
    LoginState state;
    state.failures = static_cast<std::uint32_t>(Number(object, "failures", kMaxFailures));
    state.lastFailure = static_cast<std::int64_t>(Number(object, "failed", kMaxTime));
    state.seen = static_cast<std::int64_t>(Number(object, "seen", kMaxTime));
    state.clockReset = static_cast<std::int64_t>(Number(object, "clockReset", kMaxTime));
    const std::optional<std::string> domain = Text(object, "domain");
    if (domain)
        state.lastLogin = volume::UserName{*domain, Text(object, "user").value_or("")};
    return state;
}

std::string EncodeLoginState(const LoginState &state)
{
    json object{{"type", kStateObjectType}, {"keyslots", json::array()}, {"failures", state.failures}};
    if (state.failures > 0)
        object["failed"] = state.lastFailure;
    if (state.seen > 0)
        object["seen"] = state.seen;
    if (state.clockReset > 0)
        object["clockReset"] = state.clockReset;
    if (state.lastLogin) {
        object["domain"] = state.lastLogin->domain;
        object["user"] = state.lastLogin->user;
    }
    return object.dump();
}

} // namespace host
