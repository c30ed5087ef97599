#include "module/views/catalogue.h"

#include <QFile>
#include <QTranslator>

#include "module/settings/pba_file.h"

namespace pba {

bool LoadCatalogue(QTranslator &translator, const char16_t *path)
{
    const QString name = QString::fromUtf16(path);
    // The toolkit would wait for ever on a fifo of that name.
    QFile file;
    if (!OpenPbaFile(file, name, QIODevice::ReadOnly))
        return false;
    file.close();
    // Empty strings, not null ones: those would add a suffix and cut the name at "_".
    return translator.load(PbaFileName(name), u""_qs, u""_qs, u""_qs);
}

} // namespace pba
