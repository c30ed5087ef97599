// SPDX-License-Identifier: Apache-2.0
// The translator that the host is offered for its own texts.
#pragma once

#include "pba/translator.h"
#include "module/views/catalogue.h"

namespace pba {

class Translator final : public ITranslator
{
public:
    // False when there is no catalogue; the object is then of no use.
    bool Load();

    kro::wstring_t Translate(const char *context, const char *sourceText, const char *disambiguation,
                             std::int32_t count) override;
    kro::wstring_t Translate(const char *context, const char *sourceText,
                             const char *disambiguation) override;

private:
    Catalogue m_catalogue;
};

} // namespace pba
