// SPDX-License-Identifier: Apache-2.0
#include "volume/token/enrolment.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "volume/token/base64.h"
#include "volume/token/uri.h"

namespace token {
namespace {

using base::Secret;
using nlohmann::json;

std::string TextMember(const json &object, const char *name)
{
    const auto member = object.find(name);
    return member != object.end() && member->is_string() ? member->get<std::string>() : std::string();
}

// The keys that the URI or the certificates on the token point at; empty when nothing does.
std::vector<std::string> LikelyIds(Session &session, const Enrolment &enrolment)
{
    const auto uri = ParseUri(enrolment.uri);
    std::string id = uri ? UriAttribute(uri.get(), CKA_ID) : "";
    if (!id.empty())
        return {std::move(id)};
    std::vector<std::string> ids;
    for (const CK_OBJECT_HANDLE certificate : session.Find(CKO_CERTIFICATE))
        ids.push_back(session.Attribute(certificate, CKA_ID));
    return ids;
}

std::vector<CK_OBJECT_HANDLE> Keys(Session &session, const Enrolment &enrolment)
{
    std::vector<CK_OBJECT_HANDLE> keys = session.Find(CKO_PRIVATE_KEY);
    const std::vector<std::string> likely = LikelyIds(session, enrolment);
    std::stable_partition(keys.begin(), keys.end(), [&](CK_OBJECT_HANDLE key) {
        return std::find(likely.begin(), likely.end(), session.Attribute(key, CKA_ID)) != likely.end();
    });
    return keys;
}

bool IsPoint(const std::string &key)
{
    constexpr std::size_t kMaxBytes = 1 + 2 * 66; // the longest curve has 521 bits
    return key.size() > 1 && key.size() <= kMaxBytes && key.size() % 2 == 1 && key.front() == 4;
}

Error Recover(Session &session, CK_OBJECT_HANDLE key, const Enrolment &enrolment, Secret *secret)
{
    const std::optional<CK_ULONG> type = session.Number(key, CKA_KEY_TYPE);
    if (type == CKK_RSA && session.IsSet(key, CKA_DECRYPT))
        return session.Decrypt(key, enrolment.key, secret);
    if (type == CKK_EC && session.IsSet(key, CKA_DERIVE) && IsPoint(enrolment.key))
        return session.Derive(key, enrolment.key, secret);
    return Error::NoKey;
}

} // namespace

std::optional<Enrolment> DecodeEnrolment(const volume::Object &object)
{
    const json members = json::parse(object.json, nullptr, false);
    if (!members.is_object() || TextMember(members, "type") != kEnrolmentType)
        return std::nullopt;
    const std::optional<std::string> key = FromBase64(TextMember(members, "pkcs11-key"));
    std::string uri = TextMember(members, "pkcs11-uri");
    if (!key || key->empty() || uri.empty())
        return std::nullopt;
    return Enrolment{std::move(uri), *key, object.keyslots};
}

std::string EncodeEnrolment(const Enrolment &enrolment)
{
    json keyslots = json::array();
    for (const int keyslot : enrolment.keyslots)
        keyslots.push_back(std::to_string(keyslot));
    return json{{"type", kEnrolmentType},
                {"keyslots", keyslots},
                {"pkcs11-uri", enrolment.uri},
                {"pkcs11-key", ToBase64(enrolment.key)}}
        .dump();
}

std::vector<Enrolment> EnrolmentsOf(const volume::Header &header)
{
    std::vector<int> opening;
    for (const volume::Keyslot &keyslot : header.Keyslots()) {
        if (keyslot.opensVolume)
            opening.push_back(keyslot.number);
    }
    std::vector<Enrolment> enrolments;
    for (const volume::Object &object : header.Objects(kEnrolmentType)) {
        std::optional<Enrolment> enrolment = DecodeEnrolment(object);
        if (!enrolment)
            continue;
        std::erase_if(enrolment->keyslots, [&](int keyslot) {
            return std::find(opening.begin(), opening.end(), keyslot) == opening.end();
        });
        if (!enrolment->keyslots.empty())
            enrolments.push_back(std::move(*enrolment));
    }
    return enrolments;
}

Candidates::Candidates(Session &session, Enrolment enrolment)
    : m_session(session)
    , m_enrolment(std::move(enrolment))
    , m_keys(Keys(session, m_enrolment))
{
}

Error Candidates::Next(Secret *passphrase)
{
    while (m_next < m_keys.size()) {
        Secret secret;
        const Error error = Recover(m_session, m_keys[m_next++], m_enrolment, &secret);
        if (error == Error::None)
            *passphrase = ToSecretBase64(secret);
        if (error != Error::NoKey)
            return error;
    }
    // A token that is gone has no keys, either.
    return m_session.IsTokenThere() ? Error::NoKey : Error::Removed;
}

Error Unwrap(Session &session, const Enrolment &enrolment, const Opens &opens)
{
    Candidates candidates(session, enrolment);
    Secret passphrase;
    Error error = candidates.Next(&passphrase);
    while (error == Error::None && !opens(passphrase))
        error = candidates.Next(&passphrase);
    return error;
}

} // namespace token
