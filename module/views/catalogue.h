// SPDX-License-Identifier: Apache-2.0
// Translation catalogues.
#pragma once

#include <cstdint>
#include <vector>

#include <QTranslator>

namespace pba {

// A catalogue that was read whole and checked before the toolkit sees it. The toolkit reads it where it lies
// in memory, so that nobody can change it once it is checked.
class Catalogue
{
public:
    // False when it is missing or cannot be opened, and, which the log tells, when it is damaged.
    bool Load(const char16_t *path);

    QTranslator &Translator() { return m_translator; }

private:
    std::vector<std::uint8_t> m_bytes; // outlives the translator, which reads it
    QTranslator m_translator;
};

} // namespace pba
