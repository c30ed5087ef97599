// pba_host as a program: its command line and its exit codes, with a scripted module in place of the view.
#include <QDir>

#include "login_throttle.h"
#include "pbe/files.h"
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
        WriteFile(directory.filePath("script"), script);
        QStringList arguments = Usual();
        if (QByteArray(QTest::currentDataTag()).startsWith("--test-boot"))
            arguments.append("--test-boot");
        const Outcome outcome = Run(PBA_HOST, arguments, {}, directory.path());
        QTEST(outcome.exitCode, "exitCode");
        QCOMPARE(outcome.output, QByteArray());
    }

    // What one start leaves to the next, and what a volume's policy has to say.
    void startsInARow()
    {
        QTemporaryDir directory;
        QDir root(directory.filePath("root"));
        const auto start = [&](const QByteArray &script) {
            WriteFile(directory.filePath("script"), script);
            const QStringList options{"--root", root.path(), "--allow-autologon", "--state", m_place};
            return Run(PBA_HOST, Usual() + options, {}, directory.path()).exitCode;
        };
        const auto content = [&](const QString &name) {
            QFile file(root.filePath("pba/" + name));
            return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("missing");
        };
        volume::Policy strict;
        strict.freeAttempts = 1;
        strict.autologonAllowed = false;
        for (const bool inHeader : {false, true}) {
            m_place = inHeader ? "header" : "root";
            const auto makeRoot = [&] {
                root.removeRecursively();
                root.mkpath("pba");
                WriteFile(root.filePath("pba/last_usr.txt"), "");
            };
            makeRoot();
            QVERIFY(m_scratch.Open()->SetPolicy({}) == volume::Error::None);
            QCOMPARE(start("automatic\nstart\n"), 0);
            QVERIFY(m_scratch.Open()->SetPolicy(strict) == volume::Error::None);
            QCOMPARE(start("automatic\nstart\n"), 1);
            QCOMPARE(start("wrong\nwrong\n"), 1);
            if (inHeader) // it lasts where the root does not
                makeRoot();
            QCOMPARE(start("login\nstart\n"), 1);
            QCOMPARE(content("state.json") == "missing", inHeader);
            QCOMPARE(content("last_usr.txt"), inHeader ? Utf16(u"boris") : "");
            QCOMPARE(content("last_dmn.txt"), inHeader ? Utf16(u"OFFICE") : "missing");
        }
    }

    // Whatever stands where the memory should be: nobody is locked out.
    void strangeMemories()
    {
        QTemporaryDir root;
        PbeSetFileRoot(root.path().toUtf8());
        QVERIFY(host::FileStateStore().Write({3, 5})); // makes its directory
        QCOMPARE(host::FileStateStore().Read().failures, 3u);
        for (const char *content :
             {"", "{", "[]", R"({"type":"pba-state","failures":-1,"failed":1e300,"domain":7})",
              R"({"type":"pba-state","failures":18446744073709551615,"failed":18446744073709551615})"}) {
            WriteFile(root.filePath("pba/state.json"), content);
            host::FileStateStore store;
            host::LoginThrottle throttle(store, {}, [] { return 5; });
            QVERIFY2(throttle.SecondsLeft() <= 30, content);
            throttle.BeginAttempt();
            throttle.EndAttempt({});
            QCOMPARE(store.Read().failures, 0u);
        }
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
    static void WriteFile(const QString &name, const QByteArray &content)
    {
        QFile file(name);
        if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(name));
    }
    static QByteArray Utf16(QStringView text)
    {
        return "\xff\xfe" + QByteArray(reinterpret_cast<const char *>(text.utf16()), 2 * text.size());
    }

    QStringList Usual() const
    {
        const QString volume = QString::fromStdString(m_scratch.Path());
        return {"--root", m_root.path(), "--volume", volume, "--module", SCRIPTED_MODULE};
    }

    QTemporaryDir m_root;
    ScratchVolume m_scratch;
    QString m_place;
};

PBA_REGISTER_TEST(ProgramTest);

#include "tst_program.moc"
