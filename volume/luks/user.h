// SPDX-License-Identifier: Apache-2.0
// A user of a volume: a LUKS2 token object of our own type in the header, which names the person and the
// keyslots that this person's password opens. docs/volume-format.md describes the object.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace volume {

inline constexpr char kUserObjectType[] = "pba-user";
inline constexpr int kMaxKeyslots = 32;
inline constexpr std::size_t kMaxNameBytes = 256;

// UTF-8, compared as a person would: see name_comparison.h. The domain may be empty.
struct UserName
{
    std::string domain;
    std::string user;

    bool operator==(const UserName &other) const;
};

struct User
{
    UserName name;
    // No number twice, each from 0 to kMaxKeyslots - 1. More than one only while a password is being
    // replaced: the first is the new one's.
    std::vector<int> keyslots;
    std::optional<int> pending{};          // the keyslot that a change under way is about to add
    bool isNew = false;                    // while its first keyslot is pending
    std::optional<std::int64_t> changed{}; // when the password was last set, in seconds since 1970
    std::string pendingCost{};             // of the pending keyslot: KeyCost::ToText
    bool removing = false;                 // its removal has begun and is to be finished
    int object = -1;                       // its number in the header; -1 when it is in none
};

// Why nobody has such a name, or why nobody should get it, without a full stop; null when it will do. Names
// that other programs gave, or former versions, may have the faults of new ones.
const char *FindNameFault(const UserName &name);
const char *FindNewNameFault(const UserName &name);

// Nothing when `json` is not a user object. The header is not trusted: any text may come here. Objects of
// other types may name a user and keyslots in the same way.
std::optional<User> DecodeUser(std::string_view json, std::string_view type = kUserObjectType);
// The name must be valid UTF-8.
std::string EncodeUser(const User &user, std::string_view type = kUserObjectType);

} // namespace volume
