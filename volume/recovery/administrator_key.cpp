// SPDX-License-Identifier: Apache-2.0
#include "volume/recovery/administrator_key.h"

#include <new>

#include <sodium.h>

#include "volume/recovery/enrolment.h"
#include "volume/recovery/json_members.h"

namespace recovery {
namespace {

using nlohmann::json;

constexpr char kPublicType[] = "pba-recovery-public-key";
constexpr char kSecretType[] = "pba-recovery-secret-key";
constexpr int kVersion = 1;
// A file that asks for more was not written by us; a later version of us may ask for more than this one.
constexpr std::uint64_t kMaxPasses = 4 * PassphraseCost().passes;
constexpr std::uint64_t kMaxMemory = 4 * PassphraseCost().memory;

using Salt = Bytes<crypto_pwhash_SALTBYTES>;
using Nonce = Bytes<crypto_aead_xchacha20poly1305_ietf_NPUBBYTES>;
using SealedKey = Bytes<32 + crypto_aead_xchacha20poly1305_ietf_ABYTES>;

bool DeriveKey(const base::Secret &passphrase, const PassphraseCost &cost, const Salt &salt, SecretKey *key)
{
    Initialise();
    return crypto_pwhash(key->Data(), key->View().size(), passphrase.Data(), passphrase.Size(), salt.data(),
                         cost.passes, cost.memory, crypto_pwhash_ALG_ARGON2ID13) == 0;
}

// Everything in the file but the sealed key is authenticated with it.
std::string AssociatedData(json object)
{
    object.erase("sealed");
    return object.dump();
}

bool IsOfType(const json &object, const char *type)
{
    return object.is_object() && TextMember(object, "type") == type &&
           NumberMember(object, "version") == kVersion;
}

} // namespace

std::string EncodePublicKey(const PublicKey &key)
{
    return json{{"type", kPublicType},
                {"version", kVersion},
                {"key", ToBase64(key)},
                {"fingerprint", Fingerprint(key)}}
               .dump(1) +
           "\n";
}

std::optional<PublicKey> DecodePublicKey(std::string_view text)
{
    const json object = json::parse(text, nullptr, false);
    PublicKey key;
    SecretKey unused;
    const bool usable = IsOfType(object, kPublicType) && FromBase64(TextMember(object, "key"), key) &&
                        TextMember(object, "fingerprint") == Fingerprint(key) &&
                        Agree(MakeAdministratorKey(), key, &unused);
    return usable ? std::optional(key) : std::nullopt;
}

SecretKey MakeAdministratorKey()
{
    SecretKey key;
    Randomise({key.Data(), key.View().size()});
    return key;
}

std::string SealSecretKey(const SecretKey &key, const base::Secret &passphrase, const PassphraseCost &cost)
{
    Salt salt;
    Nonce nonce;
    Randomise(salt);
    Randomise(nonce);
    SecretKey fileKey;
    if (!DeriveKey(passphrase, cost, salt, &fileKey))
        throw std::bad_alloc();
    json object{
        {"type", kSecretType},     {"version", kVersion},   {"fingerprint", Fingerprint(PublicKeyOf(key))},
        {"passes", cost.passes},   {"memory", cost.memory}, {"salt", ToBase64(salt)},
        {"nonce", ToBase64(nonce)}};
    const std::string header = AssociatedData(object);
    SealedKey sealed;
    crypto_aead_xchacha20poly1305_ietf_encrypt(sealed.data(), nullptr, key.View().data(), key.View().size(),
                                               reinterpret_cast<const unsigned char *>(header.data()),
                                               header.size(), nullptr, nonce.data(), fileKey.View().data());
    object["sealed"] = ToBase64(sealed);
    return object.dump(1) + "\n";
}

KeyFileFault OpenSecretKey(std::string_view text, const base::Secret &passphrase, SecretKey *key)
{
    const json object = json::parse(text, nullptr, false);
    Salt salt;
    Nonce nonce;
    SealedKey sealed;
    if (!IsOfType(object, kSecretType) || !FromBase64(TextMember(object, "salt"), salt) ||
        !FromBase64(TextMember(object, "nonce"), nonce) || !FromBase64(TextMember(object, "sealed"), sealed))
        return KeyFileFault::NoKeyFile;
    const PassphraseCost cost{NumberMember(object, "passes"), NumberMember(object, "memory")};
    if (cost.passes < crypto_pwhash_OPSLIMIT_MIN || cost.passes > kMaxPasses ||
        cost.memory < crypto_pwhash_MEMLIMIT_MIN || cost.memory > kMaxMemory)
        return KeyFileFault::NoKeyFile;
    SecretKey fileKey;
    if (!DeriveKey(passphrase, cost, salt, &fileKey))
        return KeyFileFault::OutOfMemory;
    const std::string header = AssociatedData(object);
    const int result = crypto_aead_xchacha20poly1305_ietf_decrypt(
        key->Data(), nullptr, nullptr, sealed.data(), sealed.size(),
        reinterpret_cast<const unsigned char *>(header.data()), header.size(), nonce.data(),
        fileKey.View().data());
    return result == 0 ? KeyFileFault::None : KeyFileFault::WrongPassphrase;
}

} // namespace recovery
