// A LUKS2 volume, a device or a plain file, and its users. Wraps libcryptsetup; not thread-safe.
//
// Errors are values; only std::bad_alloc is thrown. A call that fails leaves the header as it was, save that
// a keyslot without an object of ours may stay when the computer loses power in the middle of AddUser.
//
// volume_open.cpp opens and makes volumes, volume_users.cpp holds users and logins, volume_activation.cpp
// maps the opened volume.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "error.h"
#include "key_cost.h"
#include "secret.h"
#include "user.h"

struct crypt_device;

namespace volume {

// The default data offset; a smaller file has no room for any data.
inline constexpr std::uint64_t kHeaderBytes = 16 * 1024 * 1024;

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
    // What libcryptsetup last had to say, in its own words; for technicians, may be empty.
    const std::string &LastDetail() const { return m_lastDetail; }

    // In the order of their objects in the header.
    std::vector<User> Users() const;
    // Tries the keyslots of that user only. An unknown user costs one derivation, with the parameters of the
    // first user's keyslot, and is answered like a wrong password. With `volumeKey` the opened key is kept in
    // it.
    [[nodiscard]] Error Login(const UserName &name, const Secret &password, Secret *volumeKey);
    // Key derivations that Login has made so far.
    unsigned DerivationCount() const { return m_derivations; }

    // Takes any passphrase that the volume knows: it authorises an administrator.
    [[nodiscard]] Error Authorise(const Secret &passphrase, Secret *volumeKey);
    // Whether users can be added here; the library itself finds out late and cannot say why.
    [[nodiscard]] Error CheckWritable() const;
    // All users share the cost of the first one's keyslot, or an unknown name could be told by the time that
    // a login takes; nothing while there is none.
    std::optional<KeyCost> SharedCost() const;
    // `volumeKey` is from Authorise; empty right after Create.
    [[nodiscard]] Error AddUser(const UserName &name, const Secret &volumeKey, const Secret &password,
                                const KeyCost &cost);

    // Maps the volume, with the flags that its header keeps, and proves it: see IsActiveAs.
    [[nodiscard]] Error Activate(const std::string &mapperName, const Secret &volumeKey);
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
    [[nodiscard]] Error Fault(int result) const { return FromErrno(result, m_path); }
    std::optional<User> FindUser(const UserName &name) const;
    std::vector<int> UsableKeyslots(const User &user) const;
    int FirstUserKeyslot() const;
    int FindFreeKeyslot() const;
    [[nodiscard]] Error TryKeyslot(int keyslot, const Secret &password, Secret *volumeKey);
    [[nodiscard]] Error AttachUser(const UserName &name, int keyslot);

    std::string m_path;
    crypt_device *m_device = nullptr;
    std::string m_lastDetail;
    unsigned m_derivations = 0;
};

} // namespace volume
