// A user of a volume: a LUKS2 token object of our own type in the header, which names the person and the
// keyslots that this person's password opens. docs/volume-format.md describes the object.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace volume {

inline constexpr char kUserObjectType[] = "pba-user";
inline constexpr int kMaxKeyslots = 32;
inline constexpr std::size_t kMaxNameBytes = 256;

// UTF-8, compared byte by byte. The domain may be empty.
struct UserName
{
    std::string domain;
    std::string user;

    bool operator==(const UserName &) const = default;
};

struct User
{
    UserName name;
    std::vector<int> keyslots; // no number twice, each from 0 to kMaxKeyslots - 1
};

// Why a name will not do, without a full stop; null when it will.
const char *FindNameFault(const UserName &name);

// Nothing when `json` is not a user object. The header is not trusted: any text may come here.
std::optional<User> DecodeUser(std::string_view json);
// The name must be valid UTF-8.
std::string EncodeUser(const User &user);

} // namespace volume
