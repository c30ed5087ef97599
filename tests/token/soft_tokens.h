// SPDX-License-Identifier: Apache-2.0
// Tokens of SoftHSM, behind the proxy that hides, flags and renames them.
#pragma once

#include <filesystem>

#include <unistd.h>

#include "tests/support/run_program.h"
#include "tests/host/scratch_volume.h"
#include "tests/support/test_files.h"

class SoftTokens
{
public:
    static constexpr char kPin[] = "7315";
    static inline const QByteArray kAuthorised = QByteArray(ScratchVolume::kPassword) + "\n" + kPin + "\n";

    // "Anna" and "Boris" with RSA keys, of which Boris's wants the PIN for each use, and "Curve" with one of
    // an elliptic curve.
    SoftTokens()
    {
        // Modules run as another user when this one is root.
        const QStringList reachable{"-R", "a+rwX", m_directory.path()};
        if (!QFile::copy(TOKEN_PROXY, Module()))
            qFatal("no module");
        qputenv("SOFTHSM2_CONF", m_directory.filePath("softhsm2.conf").toUtf8());
        qputenv("TOKEN_PROXY", ControlFile().toUtf8());
        const QStringList tokens[] = {
            {"Anna", kPin, "rsa"}, {"Boris", kPin, "strict"}, {"Curve", kPin, "ec"}};
        for (const QStringList &token : tokens) {
            if (Run(SOFT_TOKEN, QStringList{m_directory.path()} + token).exitCode != 0)
                qFatal("no token");
        }
        TakeLogins();
        if (Run("chmod", reachable).exitCode != 0)
            qFatal("nobody reaches the tokens");
    }

    // Lines for the proxy, in the place of those before.
    void Do(const QByteArray &lines)
    {
        WriteFile(ControlFile() + ".new", lines + "\n");
        std::filesystem::rename((ControlFile() + ".new").toStdString(), ControlFile().toStdString());
    }

    // The logins since the last question.
    QByteArray TakeLogins()
    {
        const QByteArray logins = ReadFile(ControlFile() + ".log");
        WriteFile(ControlFile() + ".log", "");
        return logins;
    }

    // Of pba_token.
    std::vector<std::string> Arguments() const
    {
        std::vector<std::string> arguments{"--module", Module().toStdString()};
        if (!User().empty())
            arguments.insert(arguments.end(), {"--user", User()});
        return arguments;
    }
    QString Module() const { return m_directory.filePath("module.so"); }
    static std::string User() { return geteuid() == 0 ? "65533:65533" : ""; }

    // pba_admin token COMMAND.
    static Outcome Admin(const QString &command, const ScratchVolume &volume, const QStringList &arguments,
                         const QByteArray &input = {})
    {
        QStringList all{"token", command, "--volume", QString::fromStdString(volume.Path())};
        if (command != "remove")
            all += {"--pkcs11-module", TOKEN_PROXY};
        if (command == "add")
            all += "--password-stdin";
        return Run(PBA_ADMIN, all + arguments, input);
    }

    // The environment is the only way that the tool takes them without a terminal.
    static void EnrollByStandardTool(const QString &label, const QString &volume, const QByteArray &password)
    {
        qputenv("PIN", kPin);
        qputenv("PASSWORD", password);
        const Outcome outcome =
            Run("systemd-cryptenroll", {"--pkcs11-token-uri=pkcs11:token=" + label, volume});
        if (outcome.exitCode != 0)
            qFatal("%s", outcome.errors.constData());
        qunsetenv("PIN");
        qunsetenv("PASSWORD");
    }

private:
    QString ControlFile() const { return m_directory.filePath("control"); }

    QTemporaryDir m_directory;
};
