// A real LUKS2 volume in a temporary directory, with a derivation so cheap that tests may make many.
#pragma once

#include <memory>
#include <string>

#include <QByteArray>
#include <QTemporaryDir>
#include <QTest>

#include "volume/volume.h"

inline volume::Secret MakeSecret(std::string_view text)
{
    volume::Secret secret(text.size());
    for (char byte : text)
        secret.Append(byte);
    return secret;
}

class ScratchVolume
{
public:
    static constexpr char kPassword[] = "r\u00e4tsel 42";
    static constexpr char kOtherPassword[] = "paper boat";

    ScratchVolume()
    {
        MakeEmpty();
        Add({"", "anna"}, kPassword);
        Add({"OFFICE", "boris"}, kOtherPassword);
    }

    std::string Path() const { return File("volume.img"); }
    std::string File(const char *name) const { return m_directory.filePath(name).toStdString(); }

    std::unique_ptr<volume::Volume> Open() const
    {
        std::unique_ptr<volume::Volume> opened;
        if (const volume::Error error = volume::Volume::Open(Path(), &opened); error != volume::Error::None)
            qFatal("%s", volume::Describe(error));
        return opened;
    }
    void MakeEmpty()
    {
        QFile file(QString::fromStdString(Path()));
        if (!file.open(QFile::WriteOnly) || !file.resize(20 * 1024 * 1024) ||
            volume::Volume::Create(Path(), &m_volume) != volume::Error::None)
            qFatal("no volume");
    }
    void Add(const volume::UserName &name, std::string_view password)
    {
        const volume::Error error = m_volume->AddUser(name, volume::Secret(), MakeSecret(password),
                                                      volume::KeyCost::ForRandomSecret());
        if (error != volume::Error::None)
            qFatal("%s", volume::Describe(error));
    }

private:
    QTemporaryDir m_directory;
    std::unique_ptr<volume::Volume> m_volume;
};
