// Conversion between the toolkit's strings and those that cross the boundary to the host.
#pragma once

#include <QString>

#include "kro/string.h"

namespace pba {

inline kro::wstring_t ToHostString(const QString &text)
{
    return kro::wstring_t(kro::wstring_t::view_type(reinterpret_cast<const char16_t *>(text.utf16()),
                                                    static_cast<std::size_t>(text.size())));
}

inline QString FromHostString(const kro::wstring_t &text)
{
    return QString::fromUtf16(text.Data(), static_cast<qsizetype>(text.Length()));
}

inline QString FromHostString(const kro::string_t &text)
{
    return QString::fromUtf8(text.Data(), static_cast<qsizetype>(text.Length()));
}

// A secret on its way to the host: wiped when the call has returned.
class SecretHostString
{
public:
    explicit SecretHostString(const QString &text)
        : m_text(ToHostString(text))
    {
    }
    ~SecretHostString() { m_text.Wipe(); }
    SecretHostString(const SecretHostString &) = delete;
    SecretHostString &operator=(const SecretHostString &) = delete;

    const kro::wstring_t &Get() const { return m_text; }

private:
    kro::wstring_t m_text;
};

} // namespace pba
