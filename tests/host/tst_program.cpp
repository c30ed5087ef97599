// pba_host as a program: its command line and its exit codes, with a scripted module in place of the view.
#include <QDir>

#include "run_program.h"
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
        const auto row = [](const char *what, const char *script, int exitCode) {
            QTest::newRow(what) << QByteArray(script) << exitCode;
        };
        row("a login starts the system", "login\nstart\n", 0);
        row("the view fails after the start", "login\nstart\nfail\n", 0);
        row("a start without login", "start\n", 1);
        row("a login without start", "login\n", 1);
        row("a signal", "signal\nfail\n", 3);
        row("a signal before the start", "login\nsignal\nstart\n", 3);
        row("a signal after the start", "login\nstart\nsignal\nfail\n", 0);
        row("a second signal ends it at once", "login\nstart\nsignal\nsignal\n", 3);
        row("--test-boot", "start\n", 4);
        row("--test-boot, not ended", "", 1);
    }
    void exitCodes()
    {
        QFETCH(QByteArray, script);
        QTemporaryDir directory;
        QFile file(directory.filePath("script"));
        QVERIFY(file.open(QFile::WriteOnly) && file.write(script) == script.size());
        file.close();
        QStringList arguments = Usual();
        if (QByteArray(QTest::currentDataTag()).startsWith("--test-boot"))
            arguments.append("--test-boot");
        const Outcome outcome = Run(PBA_HOST, arguments, {}, directory.path());
        QTEST(outcome.exitCode, "exitCode");
        QCOMPARE(outcome.output, QByteArray());
    }

    void wrongUsage()
    {
        CompareFailure(Run(PBA_HOST, {}), 2, "--root is required");
        const QStringList rows[] = {{"--bogus", "", "--bogus"},
                                    {"--root", "/no/root", "/no/root"},
                                    {"--volume", "/no/volume", "/no/volume: there is no such file"},
                                    {"--volume", "/", "not a LUKS2 volume"},
                                    {"--volume", PBA_HOST, "not a LUKS2 volume"},
                                    {"--log", "/no\n/log", "/no?/log: cannot be written"},
                                    {"--log-severity", "much", "--log-severity"},
                                    {"--mapper-name", "../x", "127 letters"},
                                    {"--module", "/", "/ is no file"},
                                    {"--module", PBA_HOST, "view module"},
                                    {"--module", LIBRARY, "lacks the exports"}};
        for (const QStringList &row : rows)
            CompareFailure(Run(PBA_HOST, Usual() + row.first(2)), 2, row.last().toUtf8());
    }

private:
    QStringList Usual() const
    {
        const QString volume = QString::fromStdString(m_scratch.Path());
        return {"--root", QDir::tempPath(), "--volume", volume, "--module", SCRIPTED_MODULE};
    }

    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(ProgramTest);

#include "tst_program.moc"
