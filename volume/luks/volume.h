// SPDX-License-Identifier: Apache-2.0
// A LUKS2 volume, a device or a plain file, and its users. Wraps libcryptsetup; not thread-safe.
//
// Errors are values; only std::bad_alloc is thrown. A call that changes the header excludes other programs of
// ours while it runs, looks at the header anew, and leaves it as it was when it fails. After a loss of power
// in the middle FinishPending makes it whole. Keyslots are proven on a fresh context before they count.
//
// volume_open.cpp opens and makes volumes, volume_users.cpp holds users and logins, volume_passwords.cpp sets
// and replaces passwords, volume_keyslots.cpp and volume_objects.cpp what these and others are built from,
// volume_activation.cpp maps the opened volume.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/secret.h"
#include "volume/luks/announced_keyslot.h"
#include "volume/luks/error.h"
#include "volume/luks/header_writer.h"
#include "volume/luks/key_cost.h"
#include "volume/luks/policy.h"
#include "volume/luks/room.h"
#include "volume/luks/user.h"

struct crypt_device;

namespace volume {

// The default data offset; a smaller file has no room for any data.
inline constexpr std::uint64_t kHeaderBytes = std::uint64_t{16} * 1024 * 1024;

// A LUKS2 token object: a piece of JSON with a type and the keyslots it is about, kept by all LUKS2 tools.
struct Object
{
    int number;
    std::string type;
    std::string json;
    std::vector<int> keyslots;
};

struct Keyslot
{
    int number;
    bool opensVolume; // else it holds another key ("unbound")
    KeyCost cost;
};

// When no keyslot is free for the new password.
enum class WhenFull {
    Refuse,
    DropOld, // for who holds the volume key by another proven way in: the old password's keyslot goes first
};

class Volume
{
public:
    // Reading is enough. Tells apart what is missing, forbidden, no LUKS2 volume or damaged.
    [[nodiscard]] static Error Open(const std::string &path, std::unique_ptr<Volume> *volume);
    // Writes a new header with a new volume key, without keyslots: what was there is lost.
    [[nodiscard]] static Error Create(const std::string &path, std::unique_ptr<Volume> *volume);
    ~Volume();
    Volume(const Volume &) = delete;
    Volume &operator=(const Volume &) = delete;

    const std::string &Path() const { return m_path; }
    std::string Uuid() const;
    // What libcryptsetup first had to say since the last change or mapping began, in its own words: what it
    // says afterwards follows from that. For technicians, may be empty.
    const std::string &LastDetail() const { return m_lastDetail; }

    // What other programs have written since counts from here on. When it fails everything stays as it was.
    [[nodiscard]] Error Load();

    // Those of the objects of a type, in the order in which these stand in the header.
    std::vector<User> Users(std::string_view type = kUserObjectType) const;
    std::optional<User> FindUser(const UserName &name) const;
    // Tries the keyslots of that user only. An unknown user costs one derivation, with the parameters of the
    // first user's keyslot, and is answered like a wrong password. With `volumeKey` the opened key is kept in
    // it.
    [[nodiscard]] Error Login(const UserName &name, const base::Secret &password, base::Secret *volumeKey);
    // Key derivations that logins and openings have made so far.
    unsigned DerivationCount() const { return m_derivations; }
    // Takes any passphrase that the volume knows, save those of the keyslots `except`: it authorises an
    // administrator.
    [[nodiscard]] Error Authorise(const base::Secret &passphrase, base::Secret *volumeKey,
                                  const std::vector<int> &except = {});

    // Whether the header can be changed here and may be; the library itself finds out late and cannot say
    // why.
    [[nodiscard]] Error CheckWritable() const;
    // Finishes or undoes what a loss of power interrupted; to be called at each start where the header is
    // writable. Writes nothing when there is nothing to do.
    [[nodiscard]] Error FinishPending();
    // `volumeKey` is from Authorise; empty right after Create. `cost` counts for the first user only: all
    // share the cost of the first one's keyslot, or an unknown name could be told by the time a login takes.
    [[nodiscard]] Error AddUser(const UserName &name, const base::Secret &volumeKey,
                                const base::Secret &password, const KeyCost &cost);
    // What would keep AddUser from it whatever the password is.
    [[nodiscard]] Error CheckNewUser(const UserName &name) const;
    // With the user's keyslots. LastWayIn when no other password would open the volume.
    [[nodiscard]] Error RemoveUser(const UserName &name);
    [[nodiscard]] Error CheckRemoval(const User &user) const;
    // Whatever happens from here on, FinishPending removes the user. LastWayIn as above.
    [[nodiscard]] Error AnnounceRemoval(const UserName &name);
    // At every instant the old or the new password opens the volume, or with DropOld the way in that the
    // caller has. `volumeKey` is from Login, Authorise or OpenKeyslot.
    [[nodiscard]] Error ReplacePassword(const UserName &name, const base::Secret &volumeKey,
                                        const base::Secret &password, const KeyCost &cost,
                                        WhenFull whenFull = WhenFull::Refuse);
    // The date that passwords get which are set from here on; without it, that of the computer's clock.
    void UseDate(std::int64_t secondsSince1970) { m_date = secondsSince1970; }
    // What the policy has against a new password; whether it is the old one is tried, as a login does it.
    [[nodiscard]] Error CheckNewPassword(const UserName &name, const base::Secret &password);
    // Nothing while no user has a keyslot.
    std::optional<KeyCost> SharedCost() const;

    Policy GetPolicy() const;
    [[nodiscard]] Error SetPolicy(const Policy &policy);

    // A keyslot for `passphrase`, announced and proven. When it fails it is undone, or NotUndone.
    [[nodiscard]] Error AddKeyslot(const base::Secret &volumeKey, const base::Secret &passphrase,
                                   KeyCost cost, KeyslotOwner &owner);
    // Opens this keyslot and no other; `volumeKey` may be null.
    [[nodiscard]] Error OpenKeyslot(int keyslot, const base::Secret &passphrase, base::Secret *volumeKey);
    // Takes it out of the objects that name it, too. LastWayIn when no password would be left.
    [[nodiscard]] Error RemoveKeyslot(int keyslot);
    std::vector<Keyslot> Keyslots() const;
    // Of these the ones that open the volume; others hold another key.
    std::vector<int> UsableKeyslots(const std::vector<int> &keyslots) const;
    // Whether it opens the volume for a person who knows a password: it is a user's, or in no object at all.
    bool IsWayIn(int keyslot) const;
    // Whether a keyslot that an object has announced was added: it costs what was announced, and no object
    // names it. Anything else is somebody else's, who has taken the number since.
    bool IsAnnounced(int keyslot, const std::string &cost) const;
    // Of an object's keyslots those behind the first one, which a replacement has left: they open the volume,
    // and no other object names them.
    std::vector<int> FormerKeyslots(const std::vector<int> &keyslots, int object) const;

    // All, or those of a type. The header is not trusted: any JSON may stand in them.
    std::vector<Object> Objects(std::string_view type = {}) const;
    // Replaces the object `*number`, or makes a new one when that is -1. The keyslots it names must exist.
    [[nodiscard]] Error WriteObject(const std::string &json, int *number);
    [[nodiscard]] Error RemoveObject(int number);
    Room RoomLeft() const;
    // NoSpace unless `needed` fits and leaves free what changing a password takes.
    [[nodiscard]] Error CheckRoom(const Room &needed) const;
    // Runs several changes as one, on what the header holds now: other programs of ours wait. May be nested.
    // `body` answers an Error; what it throws passes through.
    template <typename Body>
    [[nodiscard]] Error Change(Body body, std::chrono::milliseconds patience = kLockPatience)
    {
        std::shared_ptr<HeaderWriter> writer;
        const Error error = BeginChange(&writer, patience);
        return error == Error::None ? body() : error;
    }

    // Maps the volume, with these flags of libcryptsetup and those that its header keeps, and proves it: see
    // IsActiveAs.
    [[nodiscard]] Error Activate(const std::string &mapperName, std::uint32_t flags,
                                 const base::Secret &volumeKey);
    // Looked up, not remembered: the name is active, it is this volume, and the device below is ours.
    bool IsActiveAs(const std::string &mapperName) const;
    // Whether Activate could succeed: the device mapper answers, and the name is free or ours.
    [[nodiscard]] Error CheckMapperName(const std::string &mapperName) const;

private:
    explicit Volume(std::string path)
        : m_path(std::move(path))
    {
    }

    [[nodiscard]] Error Connect();
    [[nodiscard]] Error BeginChange(std::shared_ptr<HeaderWriter> *writer,
                                    std::chrono::milliseconds patience);
    [[nodiscard]] Error Fault(int result) const { return FromErrno(result, m_path); }

    // These change the header and belong inside Change.
    [[nodiscard]] Error DestroyKeyslots(const std::vector<int> &keyslots);
    [[nodiscard]] Error UndoKeyslot(int keyslot, const KeyCost &cost, KeyslotOwner &owner);
    [[nodiscard]] Error SetPassword(const User &user, const base::Secret &volumeKey,
                                    const base::Secret &password, const KeyCost &cost);
    [[nodiscard]] Error DropKeyslots(User *user, const base::Secret &volumeKey, const KeyCost &cost);
    [[nodiscard]] Error Finish(const User &user);
    [[nodiscard]] Error FinishRemoval(User user);
    [[nodiscard]] Error FinishRemovals();
    [[nodiscard]] Error FinishAll();

    std::int64_t Date() const; // for a password that is set now
    int FindFreeKeyslot() const;
    bool IsNamed(int keyslot, int besides = -1) const;
    bool IsUnfinished(const User &user) const;
    std::vector<int> OwnKeyslots(const std::vector<int> &keyslots, int object) const;
    int FirstUserKeyslot() const;
    bool LeavesWayIn(const std::vector<int> &withoutKeyslots) const;
    [[nodiscard]] Error ProveKeyslot(int keyslot, const base::Secret &passphrase) const;

    std::string m_path;
    crypt_device *m_device = nullptr;
    std::weak_ptr<HeaderWriter> m_writer; // of the change under way
    std::string m_lastDetail;
    std::optional<std::int64_t> m_date;
    unsigned m_derivations = 0;
};

} // namespace volume
