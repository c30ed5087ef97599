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

std::string PlainName(const Description &token)
{
    return token.Label().empty() ? Text(token.Info().model) : token.Label();
}

} // namespace

std::string Description::Label() const
{
    return Text(m_info.label);
}

std::string Description::Serial() const
{
    return Text(m_info.serialNumber);
}

std::string Description::Uri(std::string objectId) const
{
    const auto uri = MakeUri();
    *p11_kit_uri_get_token_info(uri.get()) = m_info;
    CK_ATTRIBUTE id{CKA_ID, objectId.data(), objectId.size()};
    if (!objectId.empty())
        p11_kit_uri_set_attribute(uri.get(), &id);
    return FormatUri(uri.get());
}

bool Description::IsSameAs(const Description &other) const
{
    return Equal(m_info.serialNumber, other.m_info.serialNumber) &&
           Equal(m_info.manufacturerID, other.m_info.manufacturerID) &&
           Equal(m_info.model, other.m_info.model) && Equal(m_info.label, other.m_info.label);
}

bool Description::Matches(const std::string &text) const
{
    const auto uri = ParseUri(text);
    return uri && p11_kit_uri_match_token_info(uri.get(), &m_info) &&
           p11_kit_uri_match_slot_info(uri.get(), &m_reader) &&
           p11_kit_uri_match_module_info(uri.get(), &m_maker);
}

std::vector<std::string> DisplayNames(const std::vector<Description> &tokens)
{
    std::vector<std::string> names;
    for (const Description &token : tokens) {
        const std::string name = PlainName(token);
        const bool shared = std::count_if(tokens.begin(), tokens.end(), [&](const Description &other) {
                                return PlainName(other) == name;
                            }) > 1;
        names.push_back(shared && !token.Serial().empty() ? name + " (" + token.Serial() + ")" : name);
    }
    return names;
}

} // namespace token
