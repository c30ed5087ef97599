// SPDX-License-Identifier: Apache-2.0
// Volumes and users as an administrator makes them, checked with the standard tool.
#include <csignal>

#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>

#include "tests/support/json_report.h"
#include "tests/support/test_main.h"

class VolumeCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const Outcome made =
            Run(PBA_ADMIN, Create(m_volume) + QStringList{"--domain", "B\u00fcro"}, "green quill 7\n");
        QVERIFY2(made.exitCode == 0 && made.errors.isEmpty() && made.output.isEmpty(), made.errors);
    }

    void aNewVolumeAndASecondUser()
    {
        QCOMPARE(QFileInfo(m_volume).size(), 20 * 1024 * 1024);
        QVERIFY(!(QFileInfo(m_volume).permissions() & (QFile::ReadGroup | QFile::ReadOther)));
        QVERIFY(Opens(m_volume, "green quill 7") && !Opens(m_volume, "green quill 7\n"));
        const Outcome added =
            Run(PBA_ADMIN, User("add", m_volume, "boris"), "green quill 7\r\npaper boat\r\n");
        QCOMPARE(added.errors, QByteArray());
        QVERIFY(Opens(m_volume, "paper boat"));

        const QByteArray json = RunStandardTool({"luksDump", "--dump-json-metadata", m_volume}).output;
        const QJsonObject header = QJsonDocument::fromJson(json).object();
        QJsonObject object = header["tokens"]["0"].toObject();
        QVERIFY(qAbs(object.take("changed").toInteger() - QDateTime::currentSecsSinceEpoch()) < 3600);
        const QJsonObject user{
            {"type", "pba-user"}, {"keyslots", QJsonArray{"0"}}, {"domain", "B\u00fcro"}, {"user", "anna"}};
        QCOMPARE(object, user);
        QCOMPARE(header["config"]["json_size"].toString(), "61440");
        QJsonObject anna = header["keyslots"]["0"]["kdf"].toObject();
        QJsonObject boris = header["keyslots"]["1"]["kdf"].toObject();
        QVERIFY(anna.take("salt") != boris.take("salt"));
        QCOMPARE(anna, boris);
        QVERIFY(anna["type"] == "argon2id" && anna["memory"].toInt() <= 512 * 1024);
    }

    void aVolumeOfTheStandardTool()
    {
        const QString path = m_directory.filePath("foreign.img");
        WriteFile(path, QByteArray(20 * 1024 * 1024, '\0'));
        const QStringList format{"luksFormat", "-q", "--pbkdf", "pbkdf2", "--pbkdf-force-iterations",
                                 "1000",       path, "-"};
        QCOMPARE(RunStandardTool(format, "master").exitCode, 0);
        const QStringList annas = User("add", path, "anna") + QStringList{"--iter-time", "1"};
        QCOMPARE(Run(PBA_ADMIN, annas, "master\nfirst one\n").errors, QByteArray());
        QVERIFY(Opens(path, "master") && Opens(path, "first one"));
        QCOMPARE(Run(PBA_ADMIN, User("passwd", path, "anna"), "first one\nsecond one\n").errors,
                 QByteArray());
        QVERIFY(Opens(path, "master") && !Opens(path, "first one") && Opens(path, "second one"));

        const QJsonObject info = Report({"volume", "info", path}).object();
        const QJsonArray keyslots = info["keyslots"].toArray();
        QCOMPARE(keyslots[0]["purpose"].toString() + " " + keyslots[1]["purpose"].toString(), "other user");
        QCOMPARE(info["users"].toArray(), Report({"user", "list", "--volume", path}).array());

        CompareFailure(Run(PBA_ADMIN, User("remove", path, "anna"), "second one\n"), 1, "one that stays");
        // Looks like anna, and goes like anybody.
        const QByteArray twin =
            "{\"type\":\"pba-user\",\"keyslots\":[],\"domain\":\"\",\"user\":\"an\u200bna\"}";
        QCOMPARE(RunStandardTool({"token", "import", path}, twin).errors, QByteArray());
        QVERIFY(Run(PBA_ADMIN, {"user", "list", "--volume", path}).output.contains("\nan\\u{200b}na "));
        for (const char *name : {"an\u200bna", "anna"})
            QCOMPARE(Run(PBA_ADMIN, User("remove", path, name), "master\n").errors, QByteArray());
        QVERIFY(Opens(path, "master") && !Opens(path, "second one"));
        QCOMPARE(Report({"user", "list", "--volume", path}).array(), QJsonArray());

        const char *const objects[] = {"{\"type\":\"pba-user\",\"keyslots\":[],\"domain\":\"\\ud800\\u001b["
                                       "2J\\\"\",\"user\":\"\\u202e\"}",
                                       "{\"type\":\"\xff\\u0007\",\"keyslots\":[\"0\"]}"};
        for (const char *object : objects)
            QCOMPARE(RunStandardTool({"token", "import", path}, object).errors, QByteArray());
        const QJsonObject hostile = Report({"volume", "info", path}).object();
        QCOMPARE(hostile["keyslots"][0]["purpose"].toString(), "\ufffd\u0007");
        QCOMPARE(hostile["users"][0]["user"].toString(), "\u202e");
    }

    void thePolicy()
    {
        const QStringList volume{"--volume", m_volume};
        QJsonObject policy = Report(QStringList{"policy", "show"} + volume).object();
        const QStringList set =
            QStringList{"policy", "set", "--expiry-days", "90", "--autologon", "no"} + volume;
        QCOMPARE(Run(PBA_ADMIN, set).errors, QByteArray());
        policy["expiryDays"] = 90;
        policy["autologonAllowed"] = false;
        QCOMPARE(Report(QStringList{"policy", "show"} + volume).object(), policy);
    }

    void refusals()
    {
        const QString path = m_directory.filePath("never.img");
        const std::tuple<const char *, QStringList, QByteArray, int> rows[] = {
            {"--size -64M", Create(path, "-64M"), "good", 2},
            {"minimum is 17M", Create(path, "16M"), "good", 2},
            {"that large", Create(path, "8000000000G"), "good enough", 1},
            {"policy asks for at least 8 characters", User("passwd", m_volume, "boris"),
             "paper boat\nshorter\n", 1},
            {"no such user", User("passwd", m_volume, "anna"), "green quill 7\npaper ship\n", 1},
            {"--minimum-length", {"policy", "set", "--minimum-length=0", "--volume", m_volume}, "", 2},
            {"do not show", Create(path, "20M", "a\u202eb"), "good", 2},
            {"unknown command: pba_admin volume frob; see pba_admin volume --help",
             {"volume", "frob"},
             "",
             2},
            {"password is empty", Create(path), "\n", 1},
            {"127 characters", Create(path), QByteArray(128, 'x'), 1},
            {"must be UTF-8 text", Create(path), "\xff", 1},
            {".img: exists already", Create(m_volume), "good", 1},
            {"user exists already", User("add", m_volume, "anna") + QStringList{"--domain", "B\u00fcro"},
             "good", 1},
            {"wrong password", User("add", m_volume, "carl"), "no\nnew\n", 1},
        };
        const QStringList before = QDir(m_directory.path()).entryList(QDir::Files);
        const auto header = [this] { return ReadFile(m_volume).first(128 * 1024); };
        const QByteArray headerBefore = header();
        for (const auto &[says, arguments, input, exitCode] : rows) {
            CompareFailure(Run(PBA_ADMIN, arguments, input), exitCode, says);
            QCOMPARE(QDir(m_directory.path()).entryList(QDir::Files), before);
            QVERIFY2(header() == headerBefore, says);
        }
    }

    // No volume gets the number of a closed stream, and what could not be written is no success.
    void standardStreams()
    {
        const auto run = [&](const char *redirection, const QStringList &arguments) {
            const QString line = QString("exec \"$0\" \"$@\" ") + redirection;
            return Run("/bin/sh", QStringList{"-c", line, PBA_ADMIN} + arguments);
        };
        CompareFailure(run("<&-", User("passwd", m_volume, "boris")), 1, "input ended");
        for (const char *redirection : {">&-", ">/dev/full"})
            CompareFailure(run(redirection, {"volume", "info", m_volume}), 1, "cannot be written");
    }

    // Never echoed, and the echo is back however the program ends.
    void passwordsAtATerminal()
    {
        const QString path = m_directory.filePath("terminal.img");
        QStringList create = Create(path);
        create.removeLast(); // no standard input
        create.last() = "1500";
        const QString command =
            "trap : INT; " PBA_ADMIN " " + create.join(' ') + "; echo ends with $?; stty -a";
        for (const auto &[again, exitCode] :
             {std::pair("Oops two\n", 1), {"Oops\x03", 130}, {"Oops one\n", 0}}) {
            QProcess terminal;
            terminal.start("script", {"-qc", command, "/dev/null"});
            QVERIFY(AnswerPrompt(&terminal, "New password: ", "Oops one\n"));
            QVERIFY(AnswerPrompt(&terminal, "New password again: ", again));
            QVERIFY(terminal.waitForFinished(120000));
            const QByteArray shown = terminal.readAllStandardOutput();
            QVERIFY2(shown.contains("ends with " + QByteArray::number(exitCode) + "\r\n"), shown);
            QVERIFY2(shown.contains(" echo ") && !shown.contains("Oops"), shown);
            QCOMPARE(QFile::exists(path), exitCode == 0);
            QCOMPARE(shown.contains("pba_admin: making the volume"), exitCode == 0); // it takes three seconds
        }
    }

    // Neither a loss of power, nor a signal where the file must have a name from the beginning.
    void anInterruptionLeavesNothing()
    {
        QTemporaryDir directory;
        const QString path = directory.filePath("volume.img");
        const auto files = [&] { return QDir(directory.path()).entryList(QDir::Files); };
        int moment = 0;
        for (int exitCode = kPowerLost; exitCode == kPowerLost; moment += 20) {
            QFile::remove(path);
            const QStringList command = QStringList{PBA_ADMIN} + Create(path);
            exitCode = RunUntil(moment + 1, directory.path(), command, "green quill 7\n").exitCode;
            QVERIFY(files() == QStringList("volume.img") ? Opens(path, "green quill 7") : files().isEmpty());
        }
        QVERIFY(moment > 10 && QFile::remove(path));

        QProcess tool;
        QStringList arguments{"LD_PRELOAD=" POWER_LOSS, "PBA_ALL_FILES_NAMED=1", PBA_ADMIN};
        arguments += Create(path);
        arguments.replace(arguments.indexOf("1"), "60000"); // it is not done before the signal comes
        tool.start("/usr/bin/env", arguments);
        tool.write("password\n");
        tool.closeWriteChannel();
        QTRY_VERIFY(!files().isEmpty());
        ::kill(static_cast<pid_t>(tool.processId()), SIGTERM);
        QVERIFY(tool.waitForFinished(120000));
        QCOMPARE(tool.exitStatus(), QProcess::CrashExit); // it died of the signal
        QCOMPARE(files(), QStringList());
    }

private:
    static QStringList Create(const QString &path, const QString &size = "20M", const QString &user = "anna")
    {
        return {"volume", "create", path,          "--size", size,
                "--user", user,     "--iter-time", "1",      "--password-stdin"};
    }
    static QStringList User(const QString &command, const QString &path, const QString &user)
    {
        return {"user", command, "--volume", path, "--password-stdin", user};
    }
    static QJsonDocument Report(const QStringList &arguments)
    {
        return ReadReport(Run(PBA_ADMIN, arguments + QStringList{"--json"}).output);
    }
    static bool Opens(const QString &path, const QByteArray &password)
    {
        return RunStandardTool({"open", "--test-passphrase", "--key-file", "-", path}, password).exitCode ==
               0;
    }
    // A prompt shows once the echo is off, and with it nothing else: not what was typed before.
    static bool AnswerPrompt(QProcess *terminal, const QByteArray &prompt, const QByteArray &answer)
    {
        QByteArray shown;
        while (!shown.endsWith(prompt) && terminal->waitForReadyRead())
            shown += terminal->readAllStandardOutput();
        terminal->write(answer);
        return shown.trimmed() == prompt.trimmed();
    }

    QTemporaryDir m_directory;
    QString m_volume = m_directory.filePath("volume.img");
};

PBA_REGISTER_TEST(VolumeCommandsTest);

#include "tst_volume_commands.moc"
