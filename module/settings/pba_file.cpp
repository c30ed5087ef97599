#include "module/settings/pba_file.h"

#include "pbe/files.h"

namespace pba {

namespace {

const char16_t *WidePath(const QString &path)
{
    return reinterpret_cast<const char16_t *>(path.utf16());
}

} // namespace

bool PbaFileExists(const QString &path)
{
    return PbeFileExists(WidePath(path));
}

bool OpenPbaFile(QFile &file, const QString &path, QIODevice::OpenMode mode)
{
    const bool reading = mode.testFlag(QIODevice::ReadOnly);
    int descriptor = -1;
    const kro::result_t result = reading ? PbeOpenFileForReading(WidePath(path), &descriptor)
                                         : PbeOpenFileForWriting(WidePath(path), &descriptor);
    if (kro::Failed(result) || !file.open(descriptor, mode, QFileDevice::AutoCloseHandle))
        return false;
    if (reading && file.size() > kMaxPbaFileSize)
        file.close();
    return file.isOpen();
}

QString PbaFileName(const QString &path)
{
    kro::string_t name;
    if (kro::Failed(PbeGetFilePath(WidePath(path), &name)))
        return QString();
    return QString::fromUtf8(name.Data(), static_cast<qsizetype>(name.Length()));
}

} // namespace pba
