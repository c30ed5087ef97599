// SPDX-License-Identifier: Apache-2.0
// A root for screens. Started by root they run as nobody, who must get into it.
#pragma once

#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>

class ScreenRoot : public QTemporaryDir
{
public:
    ScreenRoot()
    {
        using enum QFile::Permission;
        if (!QFile::setPermissions(path(), ReadOwner | WriteOwner | ExeOwner | ReadOther | ExeOther))
            qFatal("no root for a screen");
    }
};

// What pba_host adds when it starts a screen itself.
inline QByteArrayList ScreenUser()
{
    return geteuid() == 0 ? QByteArrayList{"--user", "65534:65534"} : QByteArrayList();
}
