// SPDX-License-Identifier: Apache-2.0
#include "volume/token/session.h"

#include <algorithm>
#include <array>
#include <utility>

namespace token {
namespace {

using base::Secret;

// Far more than any token has; what a module says beyond is not believed.
constexpr std::size_t kMaxObjects = 256;
constexpr CK_ULONG kMaxAttributeBytes = 64 * 1024;

unsigned char *Bytes(std::string_view text)
{
    // The interface knows no constants, but does not write here.
    return reinterpret_cast<unsigned char *>(const_cast<char *>(text.data()));
}

// Some tokens take a point as a bare octet string, some compressed, some wrapped in DER.
std::array<std::string, 3> Encodings(std::string_view point)
{
    const std::string plain(point);
    const std::string compressed =
        static_cast<char>(2 | (plain.back() & 1)) + plain.substr(1, plain.size() / 2);
    std::string wrapped = "\x04";
    if (plain.size() > 0x7F)
        wrapped += '\x81';
    wrapped += static_cast<char>(plain.size());
    return {plain, compressed, wrapped + plain};
}

} // namespace

Session::~Session()
{
    if (m_loggedIn)
        Module()->C_Logout(m_session);
    if (m_open)
        Module()->C_CloseSession(m_session);
}

Error Session::Login()
{
    if (m_token.IsPinLocked())
        return Error::PinLocked;
    if (m_pin.empty() && !m_token.HasPinPad())
        return Error::PinMissing;
    CK_RV result = Module()->C_OpenSession(m_token.Slot(), CKF_SERIAL_SESSION, nullptr, nullptr, &m_session);
    m_open = result == CKR_OK;
    if (!m_open)
        return Explain(result, Error::Failed);
    // The slot may hold another token by now, and that one gets no PIN.
    if (!AskAgain())
        return Error::Removed;
    result = EnterPin(CKU_USER);
    if (result ==
        CKR_USER_ALREADY_LOGGED_IN) { // by whom ever: the PIN that was typed has to be the right one
        Module()->C_Logout(m_session);
        result = EnterPin(CKU_USER);
    }
    m_loggedIn = result == CKR_OK;
    return m_loggedIn ? Error::None : Explain(result, Error::Failed);
}

CK_RV Session::EnterPin(CK_USER_TYPE user)
{
    if (m_token.HasPinPad())
        return Module()->C_Login(m_session, user, nullptr, 0);
    return Module()->C_Login(m_session, user, Bytes(m_pin), m_pin.size());
}

// What the slot holds now, when that is still the same token.
std::optional<Description> Session::AskAgain() const
{
    CK_TOKEN_INFO info{};
    if (Module()->C_GetTokenInfo(m_token.Slot(), &info) != CKR_OK)
        return std::nullopt;
    Description now(m_token.Slot(), info);
    return now.IsSameAs(m_token) ? std::optional(now) : std::nullopt;
}

Error Session::ExplainWrongPin() const
{
    const std::optional<Description> now = AskAgain();
    if (!now)
        return Error::Removed;
    if (now->IsPinLocked())
        return Error::PinLocked;
    if (now->Has(CKF_USER_PIN_FINAL_TRY))
        return Error::LastTry;
    return now->Has(CKF_USER_PIN_COUNT_LOW) ? Error::FewTriesLeft : Error::WrongPin;
}

// `otherwise` is the meaning of what no token need answer.
Error Session::Explain(CK_RV result, Error otherwise) const
{
    switch (result) {
    case CKR_PIN_INCORRECT:
    case CKR_PIN_INVALID:
    case CKR_PIN_LEN_RANGE:
        return ExplainWrongPin();
    case CKR_PIN_LOCKED:
        return Error::PinLocked;
    case CKR_PIN_EXPIRED:
        return Error::PinExpired;
    case CKR_FUNCTION_CANCELED:
    case CKR_CANCEL:
        return Error::Cancelled;
    default:
        return AskAgain() ? otherwise : Error::Removed;
    }
}

std::vector<CK_OBJECT_HANDLE> Session::Find(CK_OBJECT_CLASS kind)
{
    CK_ATTRIBUTE wanted{CKA_CLASS, &kind, sizeof kind};
    std::vector<CK_OBJECT_HANDLE> found;
    if (Module()->C_FindObjectsInit(m_session, &wanted, 1) != CKR_OK)
        return found;
    std::array<CK_OBJECT_HANDLE, 16> some;
    CK_ULONG count = 0;
    while (found.size() < kMaxObjects &&
           Module()->C_FindObjects(m_session, some.data(), some.size(), &count) == CKR_OK && count > 0)
        found.insert(found.end(), some.begin(), some.begin() + std::min<std::size_t>(count, some.size()));
    Module()->C_FindObjectsFinal(m_session);
    return found;
}

std::string Session::Attribute(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type)
{
    CK_ATTRIBUTE attribute{type, nullptr, 0};
    if (Module()->C_GetAttributeValue(m_session, object, &attribute, 1) != CKR_OK ||
        attribute.ulValueLen > kMaxAttributeBytes) // also of one that cannot be told
        return {};
    std::string value(attribute.ulValueLen, '\0');
    attribute.pValue = value.data();
    if (Module()->C_GetAttributeValue(m_session, object, &attribute, 1) != CKR_OK)
        return {};
    value.resize(std::min<std::size_t>(attribute.ulValueLen, value.size()));
    return value;
}

std::optional<CK_ULONG> Session::Number(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type)
{
    CK_ULONG number = 0;
    CK_ATTRIBUTE attribute{type, &number, sizeof number};
    const bool told = Module()->C_GetAttributeValue(m_session, object, &attribute, 1) == CKR_OK &&
                      attribute.ulValueLen == sizeof number;
    return told ? std::optional(number) : std::nullopt;
}

bool Session::IsSet(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type)
{
    CK_BBOOL set = CK_FALSE;
    CK_ATTRIBUTE attribute{type, &set, sizeof set};
    return Module()->C_GetAttributeValue(m_session, object, &attribute, 1) == CKR_OK && set != CK_FALSE;
}

Error Session::Decrypt(CK_OBJECT_HANDLE key, std::string_view encrypted, Secret *plain)
{
    const bool wantsPinAgain = IsSet(key, CKA_ALWAYS_AUTHENTICATE);
    CK_MECHANISM mechanism{CKM_RSA_PKCS, nullptr, 0};
    CK_RV result = Module()->C_DecryptInit(m_session, &mechanism, key);
    if (result == CKR_OK && wantsPinAgain)
        result = EnterPin(CKU_CONTEXT_SPECIFIC);
    if (result != CKR_OK)
        return Explain(result, Error::NoKey);
    *plain = Secret(encrypted.size()); // more than enough: the padding goes
    CK_ULONG size = plain->Capacity();
    result = Module()->C_Decrypt(m_session, Bytes(encrypted), encrypted.size(),
                                 reinterpret_cast<unsigned char *>(plain->Buffer()), &size);
    if (result != CKR_OK)
        return Explain(result, Error::NoKey);
    plain->SetSize(std::min<std::size_t>(size, plain->Capacity()));
    return Error::None;
}

CK_RV Session::TryDerive(CK_OBJECT_HANDLE key, const std::string &point, CK_OBJECT_HANDLE *shared)
{
    CK_ECDH1_DERIVE_PARAMS parameters{};
    parameters.kdf = CKD_NULL;
    parameters.public_data = Bytes(point);
    parameters.public_data_len = point.size();
    CK_MECHANISM mechanism{CKM_ECDH1_DERIVE, &parameters, sizeof parameters};
    CK_OBJECT_CLASS kind = CKO_SECRET_KEY;
    CK_KEY_TYPE type = CKK_GENERIC_SECRET;
    CK_BBOOL yes = CK_TRUE;
    CK_BBOOL no = CK_FALSE;
    CK_ATTRIBUTE wanted[] = {{CKA_TOKEN, &no, sizeof no},
                             {CKA_CLASS, &kind, sizeof kind},
                             {CKA_KEY_TYPE, &type, sizeof type},
                             {CKA_SENSITIVE, &no, sizeof no},
                             {CKA_EXTRACTABLE, &yes, sizeof yes}};
    return Module()->C_DeriveKey(m_session, &mechanism, key, wanted, std::size(wanted), shared);
}

Error Session::Derive(CK_OBJECT_HANDLE key, std::string_view point, Secret *shared)
{
    CK_RV result = CKR_OK;
    for (const std::string &encoding : Encodings(point)) {
        CK_OBJECT_HANDLE object = 0;
        result = TryDerive(key, encoding, &object);
        if (result != CKR_OK)
            continue;
        const Error error = ReadValue(object, point.size() / 2, shared);
        Module()->C_DestroyObject(m_session, object);
        return error;
    }
    return Explain(result, Error::NoKey);
}

// Padded with leading zeros to `length`, should the token have dropped them.
Error Session::ReadValue(CK_OBJECT_HANDLE object, std::size_t length, Secret *value)
{
    Secret bytes(length);
    CK_ATTRIBUTE attribute{CKA_VALUE, bytes.Buffer(), bytes.Capacity()};
    const CK_RV result = Module()->C_GetAttributeValue(m_session, object, &attribute, 1);
    if (result != CKR_OK)
        return Explain(result, Error::NoKey);
    bytes.SetSize(std::min<std::size_t>(attribute.ulValueLen, length));
    *value = Secret(length);
    for (std::size_t missing = length - bytes.Size(); missing > 0; --missing)
        value->Append('\0');
    for (const char byte : bytes.View())
        value->Append(byte);
    return Error::None;
}

} // namespace token
