// SPDX-License-Identifier: Apache-2.0
// The LUKS2 header of a volume, a device or a plain file. Wraps libcryptsetup; not thread-safe.
//
// Errors are values; only std::bad_alloc is thrown. A call that changes the header excludes other programs of
// ours while it runs, looks at the header anew, and leaves it as it was when it fails. Keyslots are proven on
// a fresh context before they count.
//
// header_open.cpp opens and makes volumes and begins changes, header_keyslots.cpp and header_objects.cpp are
// what users.h, policy.h, tokens and recoveries are built from; activation.h maps the opened volume.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/secret.h"
#include "volume/luks/announced_keyslot.h"
#include "volume/luks/error.h"
#include "volume/luks/header_writer.h"
#include "volume/luks/key_cost.h"
#include "volume/luks/room.h"

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

class Header
{
public:
    // Reading is enough. Tells apart what is missing, forbidden, no LUKS2 volume or damaged.
    [[nodiscard]] static Error Open(const std::string &path, std::unique_ptr<Header> *header);
    // Writes a new header with a new volume key, without keyslots: what was there is lost.
    [[nodiscard]] static Error Create(const std::string &path, std::unique_ptr<Header> *header);
    ~Header();
    Header(const Header &) = delete;
    Header &operator=(const Header &) = delete;

    const std::string &Path() const { return m_path; }
    std::string Uuid() const;
    // What libcryptsetup first had to say since the last change or mapping began, in its own words: what it
    // says afterwards follows from that. For technicians, may be empty.
    const std::string &LastDetail() const { return m_lastDetail; }

    // What other programs have written since counts from here on. When it fails everything stays as it was.
    [[nodiscard]] Error Load();

    // Key derivations that openings have made so far.
    unsigned DerivationCount() const { return m_derivations; }
    // Takes any passphrase that the volume knows, save those of the keyslots `except`: it authorises an
    // administrator.
    [[nodiscard]] Error Authorise(const base::Secret &passphrase, base::Secret *volumeKey,
                                  const std::vector<int> &except = {});

    // Whether the header can be changed here and may be; the library itself finds out late and cannot say
    // why.
    [[nodiscard]] Error CheckWritable() const;
    // A keyslot for `passphrase`, announced and proven. When it fails it is undone, or NotUndone.
    [[nodiscard]] Error AddKeyslot(const base::Secret &volumeKey, const base::Secret &passphrase,
                                   KeyCost cost, KeyslotOwner &owner);
    // Opens this keyslot and no other; `volumeKey` may be null.
    [[nodiscard]] Error OpenKeyslot(int keyslot, const base::Secret &passphrase, base::Secret *volumeKey);
    // Takes it out of the objects that name it, too. LastWayIn when no password would be left.
    [[nodiscard]] Error RemoveKeyslot(int keyslot);
    // The same for whoever has made sure that a way in is left.
    [[nodiscard]] Error DestroyKeyslots(const std::vector<int> &keyslots);
    std::vector<Keyslot> Keyslots() const;
    // Of these the ones that open the volume; others hold another key.
    std::vector<int> UsableKeyslots(const std::vector<int> &keyslots) const;
    // Whether it opens the volume for a person who knows a password: it is a user's, or in no object at all.
    bool IsWayIn(int keyslot) const;
    bool LeavesWayIn(const std::vector<int> &withoutKeyslots) const;
    // Whether a keyslot that an object has announced was added: it costs what was announced, and no object
    // names it. Anything else is somebody else's, who has taken the number since.
    bool IsAnnounced(int keyslot, const std::string &cost) const;
    // Of an object's keyslots those that open the volume and that no other object names.
    std::vector<int> OwnKeyslots(const std::vector<int> &keyslots, int object) const;
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

    // For what reads the header by libcryptsetup; whoever changes it goes through Change. Never null.
    crypt_device *Device() const { return m_device; }
    // As LastDetail; what happened before no longer counts.
    void ForgetDetail() { m_lastDetail.clear(); }

private:
    explicit Header(std::string path)
        : m_path(std::move(path))
    {
    }

    [[nodiscard]] Error Connect();
    [[nodiscard]] Error BeginChange(std::shared_ptr<HeaderWriter> *writer,
                                    std::chrono::milliseconds patience);
    [[nodiscard]] Error Fault(int result) const { return FromErrno(result, m_path); }

    [[nodiscard]] Error UndoKeyslot(int keyslot, const KeyCost &cost, KeyslotOwner &owner);
    int FindFreeKeyslot() const;
    bool IsNamed(int keyslot, int besides = -1) const;
    [[nodiscard]] Error ProveKeyslot(int keyslot, const base::Secret &passphrase) const;

    std::string m_path;
    crypt_device *m_device = nullptr;
    std::weak_ptr<HeaderWriter> m_writer; // of the change under way
    std::string m_lastDetail;
    unsigned m_derivations = 0;
};

} // namespace volume
