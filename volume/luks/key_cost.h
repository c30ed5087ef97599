// SPDX-License-Identifier: Apache-2.0
// What deriving a keyslot's key costs, that is what one guess costs a thief.
#pragma once

#include <cstdint>
#include <string>

struct crypt_device;
struct crypt_pbkdf_type;

namespace volume {

class KeyCost
{
public:
    // As the standard tool does it for passphrases: argon2id, measured on this computer so that one
    // derivation takes about the given time, but with no more memory than any computer will have before its
    // system starts.
    static KeyCost ForPassword(std::uint32_t milliseconds);
    // For secrets that are random and long, where slowness adds nothing.
    static KeyCost ForRandomSecret();
    // Exactly that of an existing keyslot, nothing measured. False when the slot does not tell.
    static bool OfKeyslot(crypt_device *device, int keyslot, KeyCost *cost);

    // Settles what ForPassword leaves to be measured on this computer, so that keyslots of this cost can be
    // told from others; 0 or a negative errno value.
    int Measure(crypt_device *device);
    // Makes it the cost of keyslots added to `device` from now on; 0 or a negative errno value.
    int ApplyTo(crypt_device *device) const;
    // Whether a derivation would use more memory than there is now.
    bool ExceedsMemory() const;
    // In a few words, such as "argon2id, 512 MiB".
    std::string Describe() const;
    // The same for equal work only. Threads do not count: the library takes fewer where the computer has
    // fewer processors.
    std::string ToText() const;
    bool operator==(const KeyCost &other) const { return ToText() == other.ToText(); }

private:
    crypt_pbkdf_type Parameters() const;

    std::string m_type;
    std::string m_hash;
    std::uint32_t m_milliseconds = 0;
    std::uint32_t m_iterations = 0;
    std::uint32_t m_memory = 0; // KiB
    std::uint32_t m_threads = 0;
};

} // namespace volume
