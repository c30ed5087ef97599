// SPDX-License-Identifier: Apache-2.0
#include "volume/token/wrap.h"

#include <memory>

#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/param_build.h>
#include <openssl/rand.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>

#include "volume/token/base64.h"
#include "volume/token/uri.h"

namespace token {
namespace {

using base::Secret;

// Far more than the volume's key has, and with its padding small enough for RSA keys of 1,024 bits.
constexpr std::size_t kSecretBytes = 64;

template <auto Free>
struct Release
{
    template <typename T>
    void operator()(T *object) const
    {
        Free(object);
    }
};
using PublicKey = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY_free>>;
using KeyContext = std::unique_ptr<EVP_PKEY_CTX, Release<EVP_PKEY_CTX_free>>;
using Certificate = std::unique_ptr<X509, Release<X509_free>>;
using Number = std::unique_ptr<BIGNUM, Release<BN_free>>;
using Builder = std::unique_ptr<OSSL_PARAM_BLD, Release<OSSL_PARAM_BLD_free>>;
using Parameters = std::unique_ptr<OSSL_PARAM, Release<OSSL_PARAM_free>>;

const unsigned char *Bytes(const std::string &text)
{
    return reinterpret_cast<const unsigned char *>(text.data());
}

Error ChooseKey(Session &session, const std::string &uri, CK_OBJECT_HANDLE *key)
{
    const auto wanted = ParseUri(uri);
    if (!wanted)
        return Error::Failed;
    const std::string id = UriAttribute(wanted.get(), CKA_ID);
    const std::string label = UriAttribute(wanted.get(), CKA_LABEL);
    std::vector<CK_OBJECT_HANDLE> keys = session.Find(CKO_PRIVATE_KEY);
    std::erase_if(keys, [&](CK_OBJECT_HANDLE candidate) {
        return session.Number(candidate, CKA_KEY_TYPE) != CKK_RSA || !session.IsSet(candidate, CKA_DECRYPT) ||
               (!id.empty() && session.Attribute(candidate, CKA_ID) != id) ||
               (!label.empty() && session.Attribute(candidate, CKA_LABEL) != label);
    });
    if (keys.size() != 1)
        return keys.empty() ? Error::NoKey : Error::SeveralKeys;
    *key = keys.front();
    return Error::None;
}

PublicKey KeyOfCertificate(Session &session, const std::string &id)
{
    for (const CK_OBJECT_HANDLE object : session.Find(CKO_CERTIFICATE)) {
        if (id.empty() || session.Attribute(object, CKA_ID) != id)
            continue;
        const std::string value = session.Attribute(object, CKA_VALUE);
        const unsigned char *at = Bytes(value);
        const Certificate certificate(d2i_X509(nullptr, &at, static_cast<long>(value.size())));
        if (certificate)
            return PublicKey(X509_get_pubkey(certificate.get()));
    }
    return nullptr;
}

PublicKey KeyOfNumbers(const std::string &modulus, const std::string &exponent)
{
    const Number n(BN_bin2bn(Bytes(modulus), static_cast<int>(modulus.size()), nullptr));
    const Number e(BN_bin2bn(Bytes(exponent), static_cast<int>(exponent.size()), nullptr));
    const Builder builder(OSSL_PARAM_BLD_new());
    const KeyContext context(EVP_PKEY_CTX_new_from_name(nullptr, "RSA", nullptr));
    if (modulus.empty() || exponent.empty() || !builder || !context ||
        OSSL_PARAM_BLD_push_BN(builder.get(), OSSL_PKEY_PARAM_RSA_N, n.get()) != 1 ||
        OSSL_PARAM_BLD_push_BN(builder.get(), OSSL_PKEY_PARAM_RSA_E, e.get()) != 1)
        return nullptr;
    const Parameters parameters(OSSL_PARAM_BLD_to_param(builder.get()));
    EVP_PKEY *key = nullptr;
    if (EVP_PKEY_fromdata_init(context.get()) != 1 ||
        EVP_PKEY_fromdata(context.get(), &key, EVP_PKEY_PUBLIC_KEY, parameters.get()) != 1)
        return nullptr;
    return PublicKey(key);
}

PublicKey PublicKeyOf(Session &session, CK_OBJECT_HANDLE key)
{
    PublicKey certified = KeyOfCertificate(session, session.Attribute(key, CKA_ID));
    return certified ? std::move(certified)
                     : KeyOfNumbers(session.Attribute(key, CKA_MODULUS),
                                    session.Attribute(key, CKA_PUBLIC_EXPONENT));
}

// Empty when the key cannot encrypt.
std::string Encrypt(EVP_PKEY *key, const Secret &plain)
{
    const KeyContext context(EVP_PKEY_CTX_new(key, nullptr));
    const auto *bytes = reinterpret_cast<const unsigned char *>(plain.Data());
    std::size_t size = 0;
    if (!context || EVP_PKEY_encrypt_init(context.get()) != 1 ||
        EVP_PKEY_CTX_set_rsa_padding(context.get(), RSA_PKCS1_PADDING) != 1 ||
        EVP_PKEY_encrypt(context.get(), nullptr, &size, bytes, plain.Size()) != 1)
        return {};
    std::string encrypted(size, '\0');
    if (EVP_PKEY_encrypt(context.get(), reinterpret_cast<unsigned char *>(encrypted.data()), &size, bytes,
                         plain.Size()) != 1)
        return {};
    encrypted.resize(size);
    return encrypted;
}

} // namespace

Error Wrap(Session &session, const Token &token, const std::string &uri, Wrapped *wrapped)
{
    CK_OBJECT_HANDLE key = 0;
    if (const Error error = ChooseKey(session, uri, &key); error != Error::None)
        return error;
    const PublicKey publicKey = PublicKeyOf(session, key);
    Secret secret(kSecretBytes);
    secret.SetSize(kSecretBytes);
    if (!publicKey || RAND_priv_bytes(reinterpret_cast<unsigned char *>(secret.Buffer()), kSecretBytes) != 1)
        return Error::Failed;
    wrapped->enrolment = {token.Uri(session.Attribute(key, CKA_ID)), Encrypt(publicKey.get(), secret), {}};
    wrapped->passphrase = ToSecretBase64(secret);
    return wrapped->enrolment.key.empty() ? Error::Failed : Error::None;
}

} // namespace token
