// pba_host as a program: its command line and its exit codes, with a scripted module in place of the view.
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
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QStringList>("more");
        const auto row = [](const char *what, const char *script, int exitCode,
                            const QStringList &more = {}) {
            QTest::newRow(what) << QByteArray(script) << exitCode << more;
        };
        row("a login starts the system", "login\nstart\n", 0);
        row("the view fails after the start", "login\nstart\nfail\n", 0);
        row("a start without login", "start\n", 1);
        row("a login without start", "login\n", 1);
        row("a signal", "signal\nfail\n", 3);
        row("a signal before the start", "login\nsignal\nstart\n", 3);
        row("a signal after the start", "login\nstart\nsignal\nfail\n", 0);
        row("a second signal ends it at once", "login\nstart\nsignal\nsignal\n", 3);
        row("test boot", "start\n", 4, {"--test-boot"});
        row("test boot, never ended", "", 1, {"--test-boot"});
    }
    void exitCodes()
    {
        QFETCH(QByteArray, script);
        QFETCH(QStringList, more);
        QTemporaryDir directory;
        QFile file(directory.filePath("script"));
        QVERIFY(file.open(QFile::WriteOnly) && file.write(script) == script.size());
        file.close();
        QProcess program;
        Run(&program, directory.path(), Usual() + more);
        QTEST(program.exitCode(), "exitCode");
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
    }

    void wrongUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("says");
        const auto row = [this](const char *says, const QStringList &more) {
            QTest::newRow(says) << Usual() + more << QByteArray(says);
        };
        QTest::newRow("no argument") << QStringList() << QByteArray("--root is required");
        row("--bogus", {"--bogus"});
        row("/no/root", {"--root", "/no/root"});
        row("no such file", {"--volume", "/no/such"});
        row("not a LUKS2 volume", {"--volume", PBA_HOST});
        row("/: not a LUKS2 volume", {"--volume", "/"});
        row("/no?/log", {"--log", "/no\n/log"});
        row("--log-severity", {"--log-severity", "much"});
        row("127 letters", {"--mapper-name", "../x"});
        row("/no.so", {"--module", "/no.so"});
        row("lacks the exports", {"--module", LIBRARY});
    }
    void wrongUsage()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, says);
        QProcess program;
        Run(&program, QDir::tempPath(), arguments);
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
    static void Run(QProcess *program, const QString &directory, const QStringList &arguments)
    {
        program->setWorkingDirectory(directory);
        program->start(PBA_HOST, arguments);
        QVERIFY(program->waitForFinished());
    }

    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(ProgramTest);

#include "tst_program.moc"
