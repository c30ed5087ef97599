// SPDX-License-Identifier: Apache-2.0
// A real LUKS2 volume in a temporary directory, in memory where there is such a file system, with a
// derivation so cheap that tests may make many.
#pragma once

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "volume/luks/header.h"
#include "volume/luks/policy.h"
#include "volume/luks/users.h"

inline base::Secret MakeSecret(std::string_view text)
{
    base::Secret secret(text.size());
    for (char byte : text)
        secret.Append(byte);
    return secret;
}

class ScratchVolume
{
public:
    static constexpr char kPassword[] = "r\u00e4tsel 42";
    static constexpr char kOtherPassword[] = "paper boat";

    // Made once and copied, for making one measures the computer.
    ScratchVolume()
    {
        static const QTemporaryDir directory(Template());
        static const QString original = Make(directory.filePath("original.img"));
        if (!QFile::copy(original, QString::fromStdString(Path())))
            qFatal("no volume");
    }

    ScratchVolume(const ScratchVolume &other)
    {
        if (!QFile::copy(QString::fromStdString(other.Path()), QString::fromStdString(Path())))
            qFatal("no copy");
    }

    std::string Path() const { return m_directory.filePath("volume.img").toStdString(); }

    std::unique_ptr<volume::Header> Open() const
    {
        std::unique_ptr<volume::Header> opened;
        if (volume::Header::Open(Path(), &opened) != volume::Error::None)
            qFatal("the volume does not open");
        return opened;
    }

    // As a program of its own does.
    volume::Error Login(const volume::UserName &name, std::string_view password) const
    {
        return volume::Users(*Open()).Login(name, MakeSecret(password), nullptr);
    }

    // Anna's password is of an unknown age, which is too old for the policy.
    static void Expire(volume::Header &header, volume::Policy policy)
    {
        policy.expiryDays = 1;
        int object = volume::FindUser(header, {"", "anna"})->object;
        const char unknownAge[] = R"({"type":"pba-user","keyslots":["0"],"domain":"","user":"anna"})";
        if (volume::SetPolicy(header, policy) != volume::Error::None ||
            header.WriteObject(unknownAge, &object) != volume::Error::None)
            qFatal("nothing expires");
    }

private:
    static QString Make(const QString &path)
    {
        QFile file(path);
        std::unique_ptr<volume::Header> made;
        if (!file.open(QFile::WriteOnly) || !file.resize(20 * 1024 * 1024) ||
            volume::Header::Create(path.toStdString(), &made) != volume::Error::None)
            qFatal("no volume");
        const auto cost = volume::KeyCost::ForRandomSecret();
        if (volume::Users(*made).Add({"", "anna"}, {}, MakeSecret(kPassword), cost) != volume::Error::None ||
            volume::Users(*made).Add({"OFFICE", "boris"}, {}, MakeSecret(kOtherPassword), cost) !=
                volume::Error::None)
            qFatal("no users");
        return path;
    }

    static QString Template()
    {
        const QString memory = "/dev/shm";
        return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + "/pba-XXXXXX";
    }

    QTemporaryDir m_directory{Template()};
};
