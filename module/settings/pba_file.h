// The module's files through the platform, which knows where they lie and opens regular files only, so that
// nothing put in their place can hang the start.
#pragma once

#include <QFile>
#include <QString>

namespace pba {

// No file of the module comes near this size. A larger one is refused when it is opened for reading, since
// every file is read whole into memory.
inline constexpr qint64 kMaxPbaFileSize = 4 * 1024 * 1024;

bool PbaFileExists(const QString &path);

// `mode` is QIODevice::ReadOnly, or QIODevice::WriteOnly, which empties or creates the file. `file` closes
// it.
bool OpenPbaFile(QFile &file, const QString &path, QIODevice::OpenMode mode);

// The running system's name of `path`, for what insists on opening files itself; empty when there is none.
QString PbaFileName(const QString &path);

} // namespace pba
