// pba_host as a program: its command line and its exit codes, with a scripted module in place of the view.
#include <csignal>

#include <QDir>
#include <QProcess>

#include "scratch_volume.h"
#include "test_main.h"

class ProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void exitCodes_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QStringList>("more");
        QTest::addColumn<int>("signalCount");
        QTest::addColumn<int>("exitCode");
        const QStringList none;
        QTest::newRow("a login starts the system") << QByteArray("login\nstart\n") << none << 0 << 0;
        QTest::newRow("the view fails after the start")
            << QByteArray("login\nstart\nfail\n") << none << 0 << 0;
        QTest::newRow("a start without login") << QByteArray("start\n") << none << 0 << 1;
        QTest::newRow("a login without start") << QByteArray("login\n") << none << 0 << 1;
        QTest::newRow("the view ends at once") << QByteArray() << none << 0 << 1;
        QTest::newRow("the view fails") << QByteArray("fail\n") << none << 0 << 1;
        QTest::newRow("a signal") << QByteArray("wait\n") << none << 1 << 3;
        QTest::newRow("a signal after the start") << QByteArray("login\nstart\nwait\n") << none << 1 << 0;
        QTest::newRow("a second signal ends it at once")
            << QByteArray("ignore signals\nlogin\nstart\nwait\n") << none << 2 << 3;
        QTest::newRow("test boot") << QByteArray("start\n") << QStringList{"--test-boot"} << 0 << 4;
        QTest::newRow("test boot, never ended") << QByteArray() << QStringList{"--test-boot"} << 0 << 1;
    }
    void exitCodes()
    {
        QFETCH(QByteArray, script);
        QFETCH(QStringList, more);
        QFETCH(int, signalCount);
        QTemporaryDir directory;
        QFile file(directory.filePath("script"));
        QVERIFY(file.open(QFile::WriteOnly) && file.write(script) == script.size());
        file.close();
        QProcess program;
        Start(&program, directory.path(), Usual() + more);
        for (const QString &sign : QStringList{"waiting", "signalled"}.mid(0, signalCount)) {
            QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(directory.filePath(sign)), 30000);
            ::kill(static_cast<pid_t>(program.processId()), SIGTERM);
        }
        QVERIFY(program.waitForFinished());
        QTEST(program.exitCode(), "exitCode");
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
    }

    void wrongUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("says");
        const QString text = m_scratch.File("text").c_str();
        QFile file(text);
        QVERIFY(file.open(QFile::WriteOnly) && file.write("x") == 1);
        QTest::newRow("no argument") << QStringList() << QByteArray("--root is required");
        QTest::newRow("no volume") << QStringList{"--root", "/"} << QByteArray("--volume is required");
        QTest::newRow("unknown option") << Usual() + QStringList{"--bogus"} << QByteArray("--bogus");
        QTest::newRow("no such root")
            << Usual() + QStringList{"--root", "/no/such"} << QByteArray("/no/such");
        QTest::newRow("no such volume")
            << Usual() + QStringList{"--volume", "/no/such"} << QByteArray("no such file");
        QTest::newRow("no LUKS2 volume")
            << Usual() + QStringList{"--volume", text} << QByteArray("not a LUKS2 volume");
        QTest::newRow("log cannot be written")
            << Usual() + QStringList{"--log", "/no/such/log"} << QByteArray("--log");
        QTest::newRow("severity") << Usual() + QStringList{"--log-severity", "much"}
                                  << QByteArray("--log-severity");
        QTest::newRow("mapper name") << Usual() + QStringList{"--mapper-name", "../x"}
                                     << QByteArray("127 letters");
        QTest::newRow("no such module")
            << Usual() + QStringList{"--module", "/no/such.so"} << QByteArray("/no/such.so");
        QTest::newRow("no module") << Usual() + QStringList{"--module", "libc.so.6"} << QByteArray("module");
    }
    void wrongUsage()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, says);
        QProcess program;
        Start(&program, QDir::tempPath(), arguments);
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 2);
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
        const QByteArray errors = program.readAllStandardError();
        QVERIFY2(errors.startsWith("pba_host: ") && errors.contains(says), errors);
        QVERIFY2(errors.count('\n') == 1 && errors.endsWith('\n'), errors);
    }

private:
    QStringList Usual() const
    {
        return {"--root",   QDir::tempPath(), "--volume", m_scratch.Path().c_str(),
                "--module", SCRIPTED_MODULE};
    }
    static void Start(QProcess *program, const QString &directory, const QStringList &arguments)
    {
        program->setWorkingDirectory(directory);
        program->start(PBA_HOST, arguments);
        QVERIFY(program->waitForStarted());
    }

    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(ProgramTest);

#include "tst_program.moc"
