// SPDX-License-Identifier: Apache-2.0
// A token that is connected: what it and its reader tell without a PIN.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <p11-kit/p11-kit.h>
#include <p11-kit/uri.h>

namespace token {

// Without the module, so that other processes can have it as well.
class Description
{
public:
    Description(CK_SLOT_ID slot, const CK_TOKEN_INFO &info, const CK_SLOT_INFO &reader = {},
                const CK_INFO &maker = {})
        : m_slot(slot)
        , m_info(info)
        , m_reader(reader)
        , m_maker(maker)
    {
    }

    CK_SLOT_ID Slot() const { return m_slot; }
    const CK_TOKEN_INFO &Info() const { return m_info; }
    const CK_SLOT_INFO &Reader() const { return m_reader; }
    const CK_INFO &Maker() const { return m_maker; } // the module's

    // UTF-8 of the token's own, without the blanks that fill it up; printable, whatever the token says.
    std::string Label() const;
    std::string Serial() const;
    // Names the token by everything it tells of itself, and of the objects on it those with an identifier.
    std::string Uri(std::string objectId = {}) const;

    // Its PIN is typed at the reader and never reaches the computer.
    bool HasPinPad() const { return Has(CKF_PROTECTED_AUTHENTICATION_PATH); }
    bool IsPinLocked() const { return Has(CKF_USER_PIN_LOCKED); }
    bool Has(CK_FLAGS flag) const { return (m_info.flags & flag) != 0; }

    // The very same token, wherever it is plugged in, as far as maker, model, serial number and label tell.
    bool IsSameAs(const Description &other) const;
    // Whether a URI means this token, be it alone or among others. One that cannot be read means none.
    bool Matches(const std::string &uri) const;

private:
    CK_SLOT_ID m_slot;
    CK_TOKEN_INFO m_info;
    CK_SLOT_INFO m_reader;
    CK_INFO m_maker;
};

class Token : public Description
{
public:
    Token(CK_FUNCTION_LIST *module, const Description &description)
        : Description(description)
        , m_module(module)
    {
    }

    // Valid until the modules are asked for their tokens again.
    CK_FUNCTION_LIST *Module() const { return m_module; }

private:
    CK_FUNCTION_LIST *m_module;
};

// The names by which people tell the tokens apart, in the order of `tokens`: the label, with the serial
// number where labels are equal.
std::vector<std::string> DisplayNames(const std::vector<Description> &tokens);

} // namespace token
