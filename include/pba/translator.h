// SPDX-License-Identifier: Apache-2.0
// Translation of the host's own texts, from the catalogue \pba\l10n_pba.
#pragma once

#include <cstdint>

#include "kro/string.h"

namespace pba {

class ITranslator
{
public:
    virtual ~ITranslator() = default;

    // The translation of `sourceText`, or the source text itself, widened byte by byte (with its sign, so
    // keep source texts ASCII). Context, source text and disambiguation as lupdate extracts them; any may be
    // null. "%n" stays as it is, for the host to replace. Throws std::bad_alloc only.
    virtual kro::wstring_t Translate(const char *context, const char *sourceText, const char *disambiguation,
                                     std::int32_t count) = 0;
    virtual kro::wstring_t Translate(const char *context, const char *sourceText,
                                     const char *disambiguation) = 0;
};

} // namespace pba
