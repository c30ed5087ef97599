// SPDX-License-Identifier: Apache-2.0
// As whom a process runs.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace host {

struct Identity
{
    uid_t user;
    gid_t group;
    std::vector<gid_t> groups; // all of them, `group` too
};

// By a name, or by "UID:GID" and further groups after commas. Nothing for one that is not known, and for any
// that is root's in part.
std::optional<Identity> FindIdentity(const std::string &text);
// "UID:GID,GID...", as FindIdentity reads it.
std::string InNumbers(const Identity &identity);
// For good: there is no way back. False, with errno, when it has not been done as a whole.
[[nodiscard]] bool Assume(const Identity &identity);
[[nodiscard]] bool DropCapabilities();

} // namespace host
