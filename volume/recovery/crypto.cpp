// SPDX-License-Identifier: Apache-2.0
#include "volume/recovery/crypto.h"

#include <new>
#include <stdexcept>

#include <sodium.h>

namespace recovery {

void Initialise()
{
    if (sodium_init() < 0)
        throw std::runtime_error("the cryptographic library cannot be used here");
}

struct KeyedHash::State
{
    crypto_generichash_state hash;
};

KeyedHash::KeyedHash(ByteView key, std::string_view purpose, std::size_t resultSize)
    : m_state(nullptr)
    , m_resultSize(resultSize)
{
    Initialise();
    m_state = static_cast<State *>(sodium_malloc(sizeof(State)));
    if (!m_state)
        throw std::bad_alloc();
    crypto_generichash_init(&m_state->hash, key.data(), key.size(), resultSize);
    static constexpr std::uint8_t kEnd[] = {0};
    Add({reinterpret_cast<const std::uint8_t *>(purpose.data()), purpose.size()}).Add(kEnd);
}

KeyedHash::~KeyedHash()
{
    sodium_free(m_state); // wipes first
}

KeyedHash &KeyedHash::Add(ByteView bytes)
{
    crypto_generichash_update(&m_state->hash, bytes.data(), bytes.size());
    return *this;
}

KeyedHash &KeyedHash::AddText(std::string_view text)
{
    const std::uint8_t length[] = {static_cast<std::uint8_t>(text.size() >> 8),
                                   static_cast<std::uint8_t>(text.size())};
    return Add(length).Add({reinterpret_cast<const std::uint8_t *>(text.data()), text.size()});
}

void KeyedHash::Finish(std::uint8_t *result)
{
    crypto_generichash_final(&m_state->hash, result, m_resultSize);
}

void Randomise(std::span<std::uint8_t> bytes)
{
    Initialise();
    randombytes_buf(bytes.data(), bytes.size());
}

PublicKey PublicKeyOf(const SecretKey &secret)
{
    Initialise();
    PublicKey key;
    crypto_scalarmult_base(key.data(), secret.View().data());
    return key;
}

bool Agree(const SecretKey &secret, const PublicKey &other, SecretKey *shared)
{
    Initialise();
    const bool canonicalTop = (other.back() & 0x80) == 0;
    return canonicalTop && crypto_scalarmult(shared->Data(), secret.View().data(), other.data()) == 0;
}

bool AreEqual(ByteView a, ByteView b)
{
    return a.size() == b.size() && sodium_memcmp(a.data(), b.data(), a.size()) == 0;
}

std::string ToHex(ByteView bytes)
{
    std::string text(2 * bytes.size() + 1, '\0');
    sodium_bin2hex(text.data(), text.size(), bytes.data(), bytes.size());
    text.pop_back();
    return text;
}

bool FromHex(std::string_view text, std::span<std::uint8_t> bytes)
{
    std::size_t size = 0;
    return text.size() == 2 * bytes.size() &&
           sodium_hex2bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &size, nullptr) ==
               0 &&
           size == bytes.size();
}

std::string ToBase64(ByteView bytes)
{
    static constexpr int kVariant = sodium_base64_VARIANT_ORIGINAL;
    std::string text(sodium_base64_encoded_len(bytes.size(), kVariant), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(), kVariant);
    text.pop_back();
    return text;
}

bool FromBase64(std::string_view text, std::span<std::uint8_t> bytes)
{
    std::size_t size = 0;
    return sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &size, nullptr,
                             sodium_base64_VARIANT_ORIGINAL) == 0 &&
           size == bytes.size();
}

} // namespace recovery
