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
        const QFileInfo file(m_volume);
        QCOMPARE(file.size(), 20 * 1024 * 1024);
        QVERIFY(!(file.permissions() & (QFile::ReadGroup | QFile::ReadOther)));
        QVERIFY(Opens(m_volume, "green quill 7") && !Opens(m_volume, "green quill 7\n"));
        const QJsonObject header = Header();
        QCOMPARE(header["config"].toObject()["json_size"].toString(), "61440");
        const QJsonObject cost = header["keyslots"].toObject()["0"].toObject()["kdf"].toObject();
        QCOMPARE(cost["type"].toString(), "argon2id");
        QVERIFY(cost["memory"].toInt() <= 512 * 1024);
        const QJsonObject user{
            {"type", "pba-user"}, {"keyslots", QJsonArray{"0"}}, {"domain", "B\u00fcro"}, {"user", "anna"}};
        QCOMPARE(header["tokens"].toObject()["0"].toObject(), user);
    }

    void anotherUserCostsTheSame()
    {
        QCOMPARE(RunAdmin(Add(m_volume, "boris"), "green quill 7\r\npaper boat\r\n").errors, QByteArray());
        QVERIFY(Opens(m_volume, "paper boat"));
        const QJsonObject keyslots = Header()["keyslots"].toObject();
        QJsonObject costs[] = {keyslots["0"].toObject()["kdf"].toObject(),
                               keyslots["1"].toObject()["kdf"].toObject()};
        QVERIFY(costs[0].take("salt") != costs[1].take("salt"));
        QCOMPARE(costs[0], costs[1]);
    }

    void aVolumeOfTheStandardTool()
    {
        const QString path = m_directory.filePath("foreign.img");
        QFile file(path);
        QVERIFY(file.open(QFile::WriteOnly) && file.resize(20 * 1024 * 1024));
        const QStringList format{
            "luksFormat", "-q", "--type", "luks2", "--pbkdf", "pbkdf2", "--pbkdf-force-iterations",
            "1000",       path, "-"};
        QCOMPARE(Run("/usr/sbin/cryptsetup", format, "master").exitCode, 0);
        const QStringList add = Add(path, "anna") + QStringList{"--iter-time", "1"};
        CompareFailure(RunAdmin(add, "wrong\nnew\n"), 1, "wrong password");
        QCOMPARE(RunAdmin(add, "master\nnew\n").exitCode, 0);
        CompareFailure(RunAdmin(add, "master\nnew\n"), 1, "exists already");
        QVERIFY(Opens(path, "master") && Opens(path, "new"));
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<int>("exitCode");
        const QString path = m_directory.filePath("never.img");
        const auto row = [](const char *says, const QStringList &arguments, const QByteArray &input,
                            int exitCode) { QTest::newRow(says) << arguments << input << exitCode; };
        row("--bogus", Create(path) + QStringList{"--bogus"}, "good", 2);
        row("FILE: must not be empty", Create(""), "good", 2);
        row("/no/such/file", Create("/no/such/file"), "good", 1);
        for (const char *size : {"--size x", "--size 64Q", "--size -64M", "--size 99999999999G"})
            row(size, Create(path, size + 7), "good", 2);
        row("minimum is 17M", Create(path, "16M"), "good", 2);
        row("multiple of 4K", Create(path, "20481K"), "good", 2);
        row("that large", Create(path, "8000000000G"), "good", 1);
        row("name is empty", Create(path, "20M", ""), "good", 2);
        row("control characters", Create(path, "20M", "a\nb"), "good", 2);
        row("256 bytes", Create(path, "20M", QString(257, 'x')), "good", 2);
        row("input ended", Create(path), "", 1);
        row("password is empty", Create(path), "\n", 1);
        row("127 characters", Create(path), QByteArray(128, 'x'), 1);
        row("512 bytes", Create(path), QByteArray(513, 'x'), 1);
        row("cannot be typed", Create(path), "a\tb", 1);
        row("must be UTF-8 text", Create(path), "\xff", 1);
        row(".img: exists already", Create(m_volume), "good", 1);
        row("no such file", Add(path, "x"), "good", 1);
        row("not a LUKS2 volume", Add(PBA_ADMIN, "x"), "good", 1);
        row("user exists already", Add(m_volume, "anna") + QStringList{"--domain", "B\u00fcro"}, "good", 1);
        row("wrong password", Add(m_volume, "carl"), "no\nnew\n", 1);
        row("ended where a password", Add(m_volume, "carl"), "green quill 7\n", 1);
    }
    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, input);
        QFETCH(int, exitCode);
        const QStringList before = QDir(m_directory.path()).entryList(QDir::Files);
        const QByteArray header = HeaderBytes();
        CompareFailure(RunAdmin(arguments, input), exitCode, QTest::currentDataTag());
        QCOMPARE(QDir(m_directory.path()).entryList(QDir::Files), before);
        QCOMPARE(HeaderBytes(), header);
    }

    void aReadOnlyVolume()
    {
        const QString copy = m_directory.filePath("read-only.img");
        QVERIFY(QFile::copy(m_volume, copy));
        QVERIFY(QFile::setPermissions(copy, QFile::ReadOwner | QFile::ReadOther));
        QVERIFY(QFile::setPermissions(m_directory.path(), QFile::ReadOwner | QFile::WriteOwner |
                                                              QFile::ExeOwner | QFile::ExeOther));
        const QByteArray passwords = "green quill 7\nnew\n";
        // Permissions do not bind the administrator, so the tool runs as somebody else.
        const Outcome refused =
            geteuid() == 0
                ? Run("setpriv",
                      QStringList{"--reuid=65534", "--clear-groups", PBA_ADMIN} + Add(copy, "carl"),
                      passwords)
                : RunAdmin(Add(copy, "carl"), passwords);
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
    static QStringList Create(const QString &path, const QString &size = "20M", const QString &user = "anna")
    {
        return {"volume", "create", path,          "--size", size,
                "--user", user,     "--iter-time", "1",      "--password-stdin"};
    }
    static QStringList Add(const QString &path, const QString &user)
    {
        return {"user", "add", "--volume", path, "--password-stdin", user};
    }
    static bool Opens(const QString &path, const QByteArray &password)
    {
        return Run("/usr/sbin/cryptsetup", {"open", "--test-passphrase", "--key-file", "-", path}, password)
                   .exitCode == 0;
    }
    QJsonObject Header() const
    {
        const QByteArray json =
            Run("/usr/sbin/cryptsetup", {"luksDump", "--dump-json-metadata", m_volume}).output;
        return QJsonDocument::fromJson(json).object();
    }
    QByteArray HeaderBytes() const
    {
        QFile file(m_volume);
        return file.open(QFile::ReadOnly) ? file.read(16 * 1024 * 1024) : QByteArray();
    }

    QTemporaryDir m_directory;
    QString m_volume = m_directory.filePath("volume.img");
};

PBA_REGISTER_TEST(VolumeCommandsTest);

#include "tst_volume_commands.moc"
