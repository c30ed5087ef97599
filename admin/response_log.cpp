// SPDX-License-Identifier: Apache-2.0
#include "admin/response_log.h"

#include <ctime>
#include <string_view>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "admin/appended_line.h"
#include "admin/mapped_file.h"

namespace admin {
namespace {

using nlohmann::json;

constexpr std::size_t kMaxLineBytes = 8192; // twice what a line takes, whatever the names

std::string Now()
{
    char text[32];
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts)};
}

// Tells challenges apart, and gives none away.
std::string Digest(const recovery::Challenge &challenge)
{
    recovery::Bytes<16> digest;
    recovery::KeyedHash({}, "pba-recovery/1 log", digest.size())
        .Add(challenge.ephemeral)
        .Add(challenge.check)
        .Finish(digest.data());
    return recovery::ToHex(digest);
}

} // namespace

std::optional<std::string> ResponseLog::FindOther(const recovery::Identity &identity,
                                                  const recovery::Challenge &challenge) const
{
    const std::string record = recovery::ToHex(identity.record);
    const std::string digest = Digest(challenge);
    if (access(m_path.c_str(), F_OK) != 0)
        return std::nullopt;
    const MappedFile file(m_path);
    std::string_view line;
    for (std::size_t offset = 0; offset < file.View().size(); offset += line.size() + 1) {
        line = LineAt(file.View(), offset);
        const json entry = json::parse(line.size() <= kMaxLineBytes ? line : "", nullptr, false);
        if (entry.is_object() && entry.value("record", json()) == record &&
            entry.value("challenge", json()) != digest)
            return entry.value("time", json()).dump();
    }
    return std::nullopt;
}

void ResponseLog::Add(const recovery::EscrowSecret &record, const volume::UserName &name,
                      const recovery::Challenge &challenge) const
{
    const json entry{{"time", Now()},
                     {"machine", record.machine},
                     {"domain", name.domain},
                     {"user", name.user},
                     {"record", recovery::ToHex(record.identity.record)},
                     {"challenge", Digest(challenge)}};
    AppendedLine(m_path, entry.dump()).Keep();
}

} // namespace admin
