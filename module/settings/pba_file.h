// SPDX-License-Identifier: Apache-2.0
// The module's files through the platform, which knows where they lie and opens regular files only, so that
// nothing put in their place can hang the start.
#pragma once

#include <QFile>
#include <QString>

#include "kro/result.h"

namespace pba {

// No file of the module comes near this size. A larger one is refused when it is opened for reading, since
// every file is read whole into memory; the log tells so.
inline constexpr qint64 kMaxPbaFileSize = 4 * 1024 * 1024;

bool PbaFileExists(const QString &path);

// `mode` is QIODevice::ReadOnly, or QIODevice::WriteOnly, which empties or creates the file. `file` closes
// it. kBufferTooSmall when it is larger than kMaxPbaFileSize, else what the platform answers.
kro::result_t OpenPbaFile(QFile &file, const QString &path, QIODevice::OpenMode mode);

// One line in the platform's own log, for whoever put the file there: the module's lines have fixed shapes
// and occasions. `why` follows the path.
void ReportRefusedFile(const QString &path, const char *why);

} // namespace pba
