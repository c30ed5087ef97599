// SPDX-License-Identifier: Apache-2.0
#include "host/screen/identity.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <limits>
#include <string_view>

#include <grp.h>
#include <linux/capability.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace host {
namespace {

// Neither root's nor the number that means "unchanged".
std::optional<id_t> ParseNumber(std::string_view text)
{
    id_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number == 0 ||
        number == std::numeric_limits<id_t>::max())
        return std::nullopt;
    return number;
}

std::optional<Identity> ParseNumbers(std::string_view user, std::string_view groups)
{
    Identity identity{ParseNumber(user).value_or(0), 0, {}};
    for (bool more = true; more;) {
        const std::size_t comma = groups.find(',');
        identity.groups.push_back(ParseNumber(groups.substr(0, comma)).value_or(0));
        more = comma != groups.npos;
        groups.remove_prefix(more ? comma + 1 : 0);
    }
    identity.group = identity.groups.front();
    return identity;
}

std::optional<Identity> LookUp(const std::string &name)
{
    const passwd *entry = getpwnam(name.c_str());
    if (!entry)
        return std::nullopt;
    Identity identity{entry->pw_uid, entry->pw_gid, {}};
    int count = 0;
    getgrouplist(name.c_str(), identity.group, nullptr, &count);
    identity.groups.resize(static_cast<std::size_t>(std::max(count, 0)));
    if (getgrouplist(name.c_str(), identity.group, identity.groups.data(), &count) < 0)
        return std::nullopt;
    return identity;
}

} // namespace

std::optional<Identity> FindIdentity(const std::string &text)
{
    const std::size_t colon = text.find(':');
    std::optional<Identity> identity =
        colon == text.npos
            ? LookUp(text)
            : ParseNumbers(std::string_view(text).substr(0, colon), std::string_view(text).substr(colon + 1));
    if (identity && (identity->user == 0 || identity->group == 0 ||
                     std::count(identity->groups.begin(), identity->groups.end(), 0) > 0))
        identity.reset();
    return identity;
}

// The first of the groups is the user's own.
std::string InNumbers(const Identity &identity)
{
    std::string text = std::to_string(identity.user) + ':' + std::to_string(identity.group);
    for (const gid_t group : identity.groups) {
        if (group != identity.group)
            text += ',' + std::to_string(group);
    }
    return text;
}

bool Assume(const Identity &identity)
{
    const gid_t group = identity.group;
    const uid_t user = identity.user;
    return setgroups(identity.groups.size(), identity.groups.data()) == 0 &&
           setresgid(group, group, group) == 0 && setresuid(user, user, user) == 0;
}

// A change of the user drops them as a rule; what the process was started with may say otherwise.
bool DropCapabilities()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3]{};
    return prctl(PR_CAP_AMBIENT, PR_CAP_AMBIENT_CLEAR_ALL, 0, 0, 0) == 0 &&
           syscall(SYS_capset, &header, none) == 0;
}

} // namespace host
