// SPDX-License-Identifier: Apache-2.0
#include "volume/token/token.h"

#include <algorithm>
#include <cstring>

#include "volume/token/uri.h"
#include "base/text.h"

namespace token {
namespace {

template <std::size_t Size>
std::string Text(const unsigned char (&field)[Size])
{
    std::string_view text(reinterpret_cast<const char *>(field), Size);
    text = text.substr(0, text.find_last_not_of(std::string_view(" \0", 2)) + 1);
    return base::Printable(text);
}

template <std::size_t Size>
bool Equal(const unsigned char (&a)[Size], const unsigned char (&b)[Size])
{
    return std::memcmp(a, b, Size) == 0;
}

std::string PlainName(const Token &token)
{
    return token.Label().empty() ? Text(token.Info().model) : token.Label();
}

} // namespace

std::string Token::Label() const
{
    return Text(m_info.label);
}

std::string Token::Serial() const
{
    return Text(m_info.serialNumber);
}

std::string Token::Uri(std::string objectId) const
{
    const auto uri = MakeUri();
    *p11_kit_uri_get_token_info(uri.get()) = m_info;
    CK_ATTRIBUTE id{CKA_ID, objectId.data(), objectId.size()};
    if (!objectId.empty())
        p11_kit_uri_set_attribute(uri.get(), &id);
    return FormatUri(uri.get());
}

bool Token::IsSameAs(const Token &other) const
{
    return Equal(m_info.serialNumber, other.m_info.serialNumber) &&
           Equal(m_info.manufacturerID, other.m_info.manufacturerID) &&
           Equal(m_info.model, other.m_info.model) && Equal(m_info.label, other.m_info.label);
}

bool Token::Matches(const std::string &text) const
{
    const auto uri = ParseUri(text);
    if (!uri || !p11_kit_uri_match_token_info(uri.get(), const_cast<CK_TOKEN_INFO *>(&m_info)))
        return false;
    CK_SLOT_INFO slot{};
    CK_INFO module{};
    return m_module->C_GetSlotInfo(m_slot, &slot) == CKR_OK && m_module->C_GetInfo(&module) == CKR_OK &&
           p11_kit_uri_match_slot_info(uri.get(), &slot) && p11_kit_uri_match_module_info(uri.get(), &module);
}

std::vector<std::string> DisplayNames(const std::vector<Token> &tokens)
{
    std::vector<std::string> names;
    for (const Token &token : tokens) {
        const std::string name = PlainName(token);
        const bool shared = std::count_if(tokens.begin(), tokens.end(),
                                          [&](const Token &other) { return PlainName(other) == name; }) > 1;
        names.push_back(shared && !token.Serial().empty() ? name + " (" + token.Serial() + ")" : name);
    }
    return names;
}

} // namespace token
