// SPDX-License-Identifier: Apache-2.0
// The users of a volume: logins, passwords, and who comes and goes. Their objects and keyslots stand in the
// header. After a loss of power in the middle of a change FinishPending makes it whole.
//
// users.cpp looks and tries, users_changes.cpp changes.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "base/secret.h"
#include "volume/luks/header.h"
#include "volume/luks/key_cost.h"
#include "volume/luks/user.h"

namespace volume {

// When no keyslot is free for the new password.
enum class WhenFull {
    Refuse,
    DropOld, // for who holds the volume key by another proven way in: the old password's keyslot goes first
};

// Those of the objects of a type, in the order in which these stand in the header.
std::vector<User> UsersOf(const Header &header, std::string_view type = kUserObjectType);
std::optional<User> FindUser(const Header &header, const UserName &name);
// What all passwords cost. Nothing while no user has a keyslot.
std::optional<KeyCost> SharedCost(const Header &header);
// What would keep Users::Add from it whatever the password is.
[[nodiscard]] Error CheckNewUser(const Header &header, const UserName &name);
// LastWayIn when no other password would open the volume.
[[nodiscard]] Error CheckRemoval(const Header &header, const User &user);

class Users
{
public:
    // The header must outlive this object.
    explicit Users(Header &header)
        : m_header(header)
    {
    }

    // Tries the keyslots of that user only. An unknown user costs one derivation, with the parameters of the
    // first user's keyslot, and is answered like a wrong password. With `volumeKey` the opened key is kept in
    // it.
    [[nodiscard]] Error Login(const UserName &name, const base::Secret &password, base::Secret *volumeKey);
    // What the policy has against a new password; whether it is the old one is tried, as a login does it.
    [[nodiscard]] Error CheckNewPassword(const UserName &name, const base::Secret &password);

    // Finishes or undoes what a loss of power interrupted; to be called at each start where the header is
    // writable. Writes nothing when there is nothing to do.
    [[nodiscard]] Error FinishPending();
    // The date that passwords get which are set from here on; without it, that of the computer's clock.
    void UseDate(std::int64_t secondsSince1970) { m_date = secondsSince1970; }
    // `volumeKey` is from Header::Authorise; empty right after Header::Create. `cost` counts for the first
    // user only: all share the cost of the first one's keyslot, or an unknown name could be told by the time
    // a login takes.
    [[nodiscard]] Error Add(const UserName &name, const base::Secret &volumeKey, const base::Secret &password,
                            const KeyCost &cost);
    // With the user's keyslots. LastWayIn as for CheckRemoval.
    [[nodiscard]] Error Remove(const UserName &name);
    // Whatever happens from here on, FinishPending removes the user. LastWayIn as above.
    [[nodiscard]] Error AnnounceRemoval(const UserName &name);
    // At every instant the old or the new password opens the volume, or with DropOld the way in that the
    // caller has. `volumeKey` is from Login, Header::Authorise or Header::OpenKeyslot.
    [[nodiscard]] Error ReplacePassword(const UserName &name, const base::Secret &volumeKey,
                                        const base::Secret &password, const KeyCost &cost,
                                        WhenFull whenFull = WhenFull::Refuse);

private:
    // These belong inside Change.
    [[nodiscard]] Error SetPassword(const User &user, const base::Secret &volumeKey,
                                    const base::Secret &password, const KeyCost &cost);
    [[nodiscard]] Error DropKeyslots(User *user, const base::Secret &volumeKey, const KeyCost &cost);
    [[nodiscard]] Error Finish(const User &user);
    [[nodiscard]] Error FinishRemoval(User user);
    [[nodiscard]] Error FinishRemovals();
    [[nodiscard]] Error FinishAll();
    std::int64_t Date() const; // for a password that is set now

    Header &m_header;
    std::optional<std::int64_t> m_date;
};

} // namespace volume
