// SPDX-License-Identifier: Apache-2.0
#include "volume/recovery/enrolment.h"

#include <algorithm>
#include <charconv>

#include <nlohmann/json.hpp>
#include <sodium.h>

#include "volume/recovery/json_members.h"
#include "volume/luks/user.h" // for kMaxKeyslots

namespace recovery {
namespace {

constexpr int kVersion = 1;
constexpr std::size_t kHyphens[] = {8, 13, 18, 23};
constexpr std::size_t kUuidCharacters = 36;

// LUKS2 writes the number of a keyslot as text.
std::optional<int> DecodeKeyslot(const nlohmann::json &element)
{
    if (!element.is_string())
        return std::nullopt;
    const auto &text = element.get_ref<const std::string &>();
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole && number >= 0 && number < volume::kMaxKeyslots ? std::optional(number) : std::nullopt;
}

std::vector<int> DecodeKeyslots(const nlohmann::json &object)
{
    std::vector<int> keyslots;
    for (const nlohmann::json &element : object.value("keyslots", nlohmann::json::array())) {
        if (const std::optional<int> keyslot = DecodeKeyslot(element))
            keyslots.push_back(*keyslot);
    }
    return keyslots;
}

} // namespace

std::optional<Bytes<16>> ParseUuid(std::string_view text)
{
    Bytes<16> uuid;
    std::string digits;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool hyphen = std::find(std::begin(kHyphens), std::end(kHyphens), i) != std::end(kHyphens);
        if (hyphen != (text[i] == '-'))
            return std::nullopt;
        if (!hyphen)
            digits += text[i];
    }
    const bool parsed = text.size() == kUuidCharacters && FromHex(digits, uuid);
    return parsed ? std::optional(uuid) : std::nullopt;
}

std::string FormatUuid(const Bytes<16> &uuid)
{
    std::string text = ToHex(uuid);
    for (std::size_t place : kHyphens)
        text.insert(place, 1, '-');
    return text;
}

std::optional<Enrolment> DecodeEnrolment(std::string_view json, const Bytes<16> &uuid)
{
    const nlohmann::json object = nlohmann::json::parse(json, nullptr, false);
    Enrolment enrolment;
    enrolment.identity.volume = uuid;
    const bool ours = object.is_object() && TextMember(object, "type") == kObjectType &&
                      NumberMember(object, "version") == kVersion;
    if (!ours || !FromHex(TextMember(object, "record"), enrolment.identity.record) ||
        !FromHex(TextMember(object, "binding"), enrolment.identity.binding) ||
        !FromHex(TextMember(object, "administrator"), enrolment.administrator))
        return std::nullopt;
    enrolment.keyslots = DecodeKeyslots(object);
    enrolment.used = object.value("used", nlohmann::json()) != false;
    enrolment.pending = DecodeKeyslot(object.value("pending", nlohmann::json()));
    return enrolment;
}

std::string EncodeEnrolment(const Enrolment &enrolment)
{
    nlohmann::json keyslots = nlohmann::json::array();
    for (int keyslot : enrolment.keyslots)
        keyslots.push_back(std::to_string(keyslot));
    nlohmann::json object{{"type", kObjectType},
                          {"version", kVersion},
                          {"keyslots", keyslots},
                          {"record", ToHex(enrolment.identity.record)},
                          {"binding", ToHex(enrolment.identity.binding)},
                          {"administrator", ToHex(enrolment.administrator)},
                          {"used", enrolment.used}};
    if (enrolment.pending)
        object["pending"] = std::to_string(*enrolment.pending);
    return object.dump();
}

std::string Fingerprint(const PublicKey &key)
{
    Bytes<16> digest;
    KeyedHash({}, "pba-recovery/1 fingerprint", digest.size()).Add(key).Finish(digest.data());
    return ToHex(digest);
}

base::Secret PassphraseOf(const RecoverySecret &secret)
{
    const ByteView bytes = secret.View();
    base::Secret text(2 * bytes.size() + 1);
    sodium_bin2hex(text.Buffer(), text.Capacity(), bytes.data(), bytes.size());
    text.SetSize(2 * bytes.size());
    return text;
}

} // namespace recovery
