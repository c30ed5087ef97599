// SPDX-License-Identifier: Apache-2.0
// Conversion between the toolkit's strings and those that cross the boundary to the host.
#pragma once

#include <cstring>
#include <utility>

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

inline kro::string_t ToHostUtf8(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    kro::string_t utf8(kro::string_t::view_type(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    explicit_bzero(bytes.data(), static_cast<std::size_t>(bytes.size()));
    return utf8;
}

// A secret on its way to the host: wiped when the call has returned.
template <typename String>
class Secret
{
public:
    explicit Secret(String text)
        : m_text(std::move(text))
    {
    }
    ~Secret() { m_text.Wipe(); }
    Secret(const Secret &) = delete;
    Secret &operator=(const Secret &) = delete;

    const String &Get() const { return m_text; }

private:
    String m_text;
};

} // namespace pba
