// Volumes and users as an administrator makes them, checked with the standard tool.
#include <csignal>
#include <unistd.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include "admin_tool.h"
#include "test_main.h"

class VolumeCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const Outcome made =
            RunAdmin(Create(m_volume) + QStringList{"--domain", "B\u00fcro"}, "green quill 7\n");
        QVERIFY2(made.exitCode == 0 && made.errors.isEmpty() && made.output.isEmpty(), made.errors);
    }

    void aNewVolume()
    {
        QCOMPARE(QFileInfo(m_volume).size(), 20 * 1024 * 1024);
        QCOMPARE(QFileInfo(m_volume).permissions() & (QFile::ReadGroup | QFile::ReadOther),
                 QFile::Permissions());
        QCOMPARE(OpenWithStandardTool("green quill 7"), 0);
        QVERIFY(OpenWithStandardTool("green quill 7\n") != 0);
        const QJsonObject header = Header();
        QCOMPARE(header["config"].toObject()["json_size"].toString(), "61440");
        const QJsonObject slot = header["keyslots"].toObject()["0"].toObject();
        QCOMPARE(slot["kdf"].toObject()["type"].toString(), "argon2id");
        QVERIFY(slot["kdf"].toObject()["memory"].toInt() <= 512 * 1024);
        const QJsonObject user{
            {"type", "pba-user"}, {"keyslots", QJsonArray{"0"}}, {"domain", "B\u00fcro"}, {"user", "anna"}};
        QCOMPARE(header["tokens"].toObject()["0"].toObject(), user);
    }

    void anotherUserCostsTheSame()
    {
        const Outcome added = RunAdmin({"user", "add", "--volume", m_volume, "--password-stdin", "boris"},
                                       "green quill 7\r\npaper boat\r\n");
        QVERIFY2(added.exitCode == 0 && added.errors.isEmpty(), added.errors);
        QCOMPARE(OpenWithStandardTool("paper boat"), 0);
        const QJsonObject keyslots = Header()["keyslots"].toObject();
        for (const char *parameter : {"type", "time", "memory", "cpus"})
            QCOMPARE(keyslots["1"].toObject()["kdf"].toObject()[parameter],
                     keyslots["0"].toObject()["kdf"].toObject()[parameter]);
    }

    void aVolumeOfTheStandardTool()
    {
        const QString path = m_directory.filePath("foreign.img");
        QFile file(path);
        QVERIFY(file.open(QFile::WriteOnly) && file.resize(20 * 1024 * 1024));
        QCOMPARE(RunStandardTool({"luksFormat", "-q", "--type", "luks2", "--pbkdf", "pbkdf2",
                                  "--pbkdf-force-iterations", "1000", path, "-"},
                                 "master")
                     .exitCode,
                 0);
        const QStringList add{"user",        "add", "--volume",         path,
                              "--iter-time", "1",   "--password-stdin", "anna"};
        CompareFailure(RunAdmin(add, "wrong\nnew\n"), 1, "wrong password");
        QCOMPARE(RunAdmin(add, "master\nnew\n").exitCode, 0);
        CompareFailure(RunAdmin(add, "master\nnew\n"), 1, "exists already");
        for (const char *password : {"master", "new"})
            QCOMPARE(RunStandardTool({"open", "--test-passphrase", path}, password).exitCode, 0);
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("says");
        const QString path = m_directory.filePath("never.img");
        const QStringList create = Create(path);
        const QStringList add{"user", "add", "--volume", m_volume, "--password-stdin"};
        const QByteArray good = "good\n";
        QTest::newRow("no command") << QStringList() << good << 2 << QByteArray("subcommand");
        QTest::newRow("an unknown option")
            << create + QStringList{"--bogus"} << good << 2 << QByteArray("--bogus");
        QTest::newRow("an existing file") << Create(m_volume) << good << 1 << QByteArray("exists already");
        QTest::newRow("no such directory")
            << Create("/no/such/file") << good << 1 << QByteArray("/no/such/file");
        for (const char *size : {"", "x", "64Q", "64MM", "-64M", "99999999999G"})
            QTest::addRow("size %s", size) << Resized(create, size) << good << 2 << QByteArray("--size");
        QTest::newRow("too small") << Resized(create, "16M") << good << 2 << QByteArray("minimum is 17M");
        QTest::newRow("half a sector")
            << Resized(create, "20481K") << good << 2 << QByteArray("multiple of 4K");
        QTest::newRow("no user name")
            << create + QStringList{"--user", ""} << good << 2 << QByteArray("--user");
        QTest::newRow("no input") << create << QByteArray() << 1 << QByteArray("input ended");
        QTest::newRow("an empty password") << create << QByteArray("\n") << 1 << QByteArray("empty");
        QTest::newRow("a long password")
            << create << QByteArray(128, 'x') << 1 << QByteArray("127 characters");
        QTest::newRow("a long line") << create << QByteArray(513, 'x') << 1 << QByteArray("512 bytes");
        QTest::newRow("a tab") << create << QByteArray("a\tb\n") << 1 << QByteArray("cannot be typed");
        QTest::newRow("no UTF-8") << create << QByteArray("\xff\n") << 1 << QByteArray("cannot be typed");
        QTest::newRow("no such volume")
            << QStringList{"user", "add", "--volume", path, "x"} << good << 1 << QByteArray("no such file");
        QTest::newRow("no volume") << QStringList{"user", "add", "--volume", PBA_ADMIN, "x"} << good << 1
                                   << QByteArray("not a LUKS2 volume");
        QTest::newRow("a known user") << add + QStringList{"--domain", "B\u00fcro", "anna"} << good << 1
                                      << QByteArray("exists already");
        QTest::newRow("a wrong password")
            << add + QStringList{"carl"} << QByteArray("no\nnew\n") << 1 << QByteArray("wrong password");
        QTest::newRow("only one password")
            << add + QStringList{"carl"} << QByteArray("green quill 7\n") << 1 << QByteArray("input ended");
    }
    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, input);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, says);
        const QStringList before = QDir(m_directory.path()).entryList(QDir::Files);
        const QJsonObject header = Header();
        CompareFailure(RunAdmin(arguments, input), exitCode, says);
        QCOMPARE(QDir(m_directory.path()).entryList(QDir::Files), before);
        QCOMPARE(Header(), header);
    }

    void aReadOnlyVolume()
    {
        const QString copy = m_directory.filePath("read-only.img");
        QVERIFY(QFile::copy(m_volume, copy));
        QVERIFY(QFile::setPermissions(copy, QFile::ReadOwner | QFile::ReadOther));
        QVERIFY(QFile::setPermissions(m_directory.path(), QFile::ReadOwner | QFile::WriteOwner |
                                                              QFile::ExeOwner | QFile::ExeOther));
        const QStringList add{"user", "add", "--volume", copy, "--password-stdin", "carl"};
        const QByteArray passwords = "green quill 7\nnew\n";
        // Permissions do not bind the administrator, so the tool runs as somebody else.
        const Outcome refused =
            geteuid() == 0
                ? Run("setpriv", QStringList{"--reuid=65534", "--clear-groups", PBA_ADMIN} + add, passwords)
                : RunAdmin(add, passwords);
        CompareFailure(refused, 1, "read-only");
    }

    void aSignalLeavesNothing()
    {
        QTemporaryDir directory;
        QProcess tool;
        tool.start(PBA_ADMIN, Create(directory.filePath("volume.img")));
        tool.write("password\n");
        tool.closeWriteChannel();
        const auto files = [&] { return QDir(directory.path()).entryList(QDir::Files); };
        QTRY_VERIFY(!files().isEmpty());
        ::kill(static_cast<pid_t>(tool.processId()), SIGTERM);
        QVERIFY(tool.waitForFinished());
        QCOMPARE(tool.exitStatus(), QProcess::CrashExit); // it died of the signal
        QCOMPARE(files(), QStringList());
    }

private:
    static QStringList Create(const QString &path)
    {
        return {"volume", "create", path,          "--size", "20M",
                "--user", "anna",   "--iter-time", "1",      "--password-stdin"};
    }
    static QStringList Resized(QStringList arguments, const char *size)
    {
        arguments[4] = QString::fromLatin1(size);
        return arguments;
    }
    int OpenWithStandardTool(const QByteArray &password) const
    {
        return RunStandardTool({"open", "--test-passphrase", "--key-file", "-", m_volume}, password).exitCode;
    }
    QJsonObject Header() const
    {
        return QJsonDocument::fromJson(RunStandardTool({"luksDump", "--dump-json-metadata", m_volume}).output)
            .object();
    }

    QTemporaryDir m_directory;
    QString m_volume = m_directory.filePath("volume.img");
};

PBA_REGISTER_TEST(VolumeCommandsTest);

#include "tst_volume_commands.moc"
