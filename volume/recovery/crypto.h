// SPDX-License-Identifier: Apache-2.0
// What the recovery's cryptography is made of: fixed-size byte strings, secret or not, and keyed hashes. All
// of it is libsodium's; nothing is invented here.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/secret.h"

namespace recovery {

template <std::size_t Size>
using Bytes = std::array<std::uint8_t, Size>;
using ByteView = std::span<const std::uint8_t>;

using PublicKey = Bytes<32>;

// The fixed-size sibling of base::Secret: locked memory, wiped at the end. Zero at first.
template <std::size_t Size>
class SecretBytes
{
public:
    SecretBytes()
        : m_secret(Size)
    {
        for (std::size_t i = 0; i < Size; ++i)
            m_secret.Append('\0');
    }

    std::uint8_t *Data() { return reinterpret_cast<std::uint8_t *>(m_secret.Buffer()); }
    ByteView View() const { return {reinterpret_cast<const std::uint8_t *>(m_secret.Data()), Size}; }

private:
    base::Secret m_secret;
};

using SecretKey = SecretBytes<32>;

// BLAKE2b of a purpose, its terminating zero included, and of what is added: two purposes never collide.
class KeyedHash
{
public:
    KeyedHash(ByteView key, std::string_view purpose, std::size_t resultSize);
    ~KeyedHash();
    KeyedHash(const KeyedHash &) = delete;
    KeyedHash &operator=(const KeyedHash &) = delete;

    KeyedHash &Add(ByteView bytes);
    // With its length in two bytes before it, so that neighbours cannot borrow from each other.
    KeyedHash &AddText(std::string_view text);
    // `result` has the size given at the start. Once only.
    void Finish(std::uint8_t *result);

private:
    struct State;
    State *m_state; // in locked memory: it has seen the key
    std::size_t m_resultSize;
};

// Before any other call of libsodium's; may be repeated. Throws when the system has no random numbers.
void Initialise();
void Randomise(std::span<std::uint8_t> bytes);
PublicKey PublicKeyOf(const SecretKey &secret);
// What both sides of an exchange come to. False for points that give nothing secret away to nobody: those of
// low order, and those in a form that no honest side writes.
[[nodiscard]] bool Agree(const SecretKey &secret, const PublicKey &other, SecretKey *shared);
// Takes the same time wherever they differ.
bool AreEqual(ByteView a, ByteView b);

std::string ToHex(ByteView bytes);
// False unless `text` is exactly that many bytes in hexadecimal digits.
[[nodiscard]] bool FromHex(std::string_view text, std::span<std::uint8_t> bytes);
std::string ToBase64(ByteView bytes);
// The number of bytes is `bytes.size()` exactly.
[[nodiscard]] bool FromBase64(std::string_view text, std::span<std::uint8_t> bytes);

} // namespace recovery
