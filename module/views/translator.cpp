// SPDX-License-Identifier: Apache-2.0
#include "module/views/translator.h"

#include "module/settings/paths.h"
#include "module/views/host_string.h"

namespace pba {

namespace {

// Byte by byte and with its sign, as hosts have always got their untranslated texts.
kro::wstring_t Widened(const char *text)
{
    const std::string_view bytes(text ? text : "");
    kro::wstring_t wide;
    wide.Resize(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i)
        wide.Buffer()[i] = static_cast<char16_t>(static_cast<signed char>(bytes[i]));
    return wide;
}

kro::wstring_t TranslationOrSource(const QString &translation, const char *sourceText)
{
    return translation.isEmpty() ? Widened(sourceText) : ToHostString(translation);
}

} // namespace

bool Translator::Load()
{
    return m_catalogue.Load(kHostCataloguePath);
}

kro::wstring_t Translator::Translate(const char *context, const char *sourceText, const char *disambiguation,
                                     std::int32_t count)
{
    return TranslationOrSource(m_catalogue.Translator().translate(context, sourceText, disambiguation, count),
                               sourceText);
}

kro::wstring_t Translator::Translate(const char *context, const char *sourceText, const char *disambiguation)
{
    return TranslationOrSource(m_catalogue.Translator().translate(context, sourceText, disambiguation),
                               sourceText);
}

} // namespace pba
