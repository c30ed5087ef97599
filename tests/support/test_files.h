// SPDX-License-Identifier: Apache-2.0
// Files of a test, written and read in one piece.
#pragma once

#include <QFile>

inline void WriteFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

// Empty when there is none.
inline QByteArray ReadFile(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}
