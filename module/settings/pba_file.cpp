// SPDX-License-Identifier: Apache-2.0
#include "module/settings/pba_file.h"

#include "pbe/files.h"
#include "pbe/log.h"

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

kro::result_t OpenPbaFile(QFile &file, const QString &path, QIODevice::OpenMode mode)
{
    const bool reading = mode.testFlag(QIODevice::ReadOnly);
    int descriptor = -1;
    const kro::result_t result = reading ? PbeOpenFileForReading(WidePath(path), &descriptor)
                                         : PbeOpenFileForWriting(WidePath(path), &descriptor);
    if (kro::Failed(result))
        return result;
    if (!file.open(descriptor, mode, QFileDevice::AutoCloseHandle))
        return kro::kAccessDenied;
    if (!reading || file.size() <= kMaxPbaFileSize)
        return kro::kOk;
    file.close();
    ReportRefusedFile(path, "is larger than 4 MiB");
    return kro::kBufferTooSmall;
}

void ReportRefusedFile(const QString &path, const char *why)
{
    constexpr std::uint32_t kSeverity = 300;
    constexpr std::uint32_t kNamedSeverity = 5;
    const QByteArray line = path.toUtf8() + ' ' + why + "; put a sound one in its place\r\n";
    PbeLogMessage(kSeverity, kNamedSeverity, "PBE     ", line.constData());
}

} // namespace pba
