// SPDX-License-Identifier: Apache-2.0
// The one way to change a LUKS2 header. Whatever is written passes here, under a lock that keeps other
// programs of ours away, and counts only when it is on the disk.
#pragma once

#include <string>

#include "base/secret.h"
#include "volume/luks/error.h"
#include "volume/luks/key_cost.h"
#include "volume/luks/write_lock.h"

struct crypt_device;

namespace volume {

// Other programs write the same header, and newer ones know more about it. Programs of ours leave it alone
// while it is being re-encrypted, when whoever destroys a keyslot may destroy the only way to the new key,
// and when it requires something of its readers that they may not know.
[[nodiscard]] Error CheckChangeable(crypt_device *device);

// Keyslots that hold another key than the volume's ("unbound"), as the old one's after a re-encryption, are
// nobody's of ours.
bool OpensVolume(crypt_device *device, int keyslot);

class HeaderWriter
{
public:
    HeaderWriter(crypt_device *device, std::string path)
        : m_device(device)
        , m_path(std::move(path))
    {
    }

    // Before anything else. What the device has loaded before is to be loaded anew.
    [[nodiscard]] Error Lock(std::chrono::milliseconds patience) { return m_lock.Take(m_path, patience); }

    // Replaces the object `*number`, or makes a new one when that is -1; then `*number` is known also when it
    // fails, for a part of it may have been written.
    [[nodiscard]] Error StoreObject(const std::string &json, int *number);
    [[nodiscard]] Error DestroyObject(int number);
    [[nodiscard]] Error AddKeyslot(int keyslot, const base::Secret &volumeKey, const base::Secret &passphrase,
                                   const KeyCost &cost);
    // In the same write it goes from the objects that name it. ForeignKeyslot when it holds another key.
    [[nodiscard]] Error DestroyKeyslot(int keyslot);

private:
    template <typename Write>
    [[nodiscard]] Error Put(Write write);

    crypt_device *m_device;
    std::string m_path;
    WriteLock m_lock;
};

} // namespace volume
