// SPDX-License-Identifier: Apache-2.0
#include "module/views/catalogue.h"

#include "module/settings/pba_file.h"
#include "module/views/catalogue_check.h"

namespace pba {

bool Catalogue::Load(const char16_t *path)
{
    const QString name = QString::fromUtf16(path);
    QFile file;
    if (kro::Failed(OpenPbaFile(file, name, QIODevice::ReadOnly)))
        return false;
    const QByteArray content = file.readAll();
    m_bytes = CheckedCatalogue(reinterpret_cast<const std::uint8_t *>(content.constData()),
                               static_cast<std::size_t>(content.size()));
    if (m_translator.load(m_bytes.data(), static_cast<int>(m_bytes.size())))
        return true;
    ReportRefusedFile(name, "is damaged");
    return false;
}

} // namespace pba
