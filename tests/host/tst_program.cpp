// SPDX-License-Identifier: Apache-2.0
// pba_host as a program: its command line and its exit codes, with a scripted module in place of the view.
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>

#include <QDir>

#include "host/service/handed_files.h"
#include "host/service/login_throttle.h"
#include "pbe/files.h"
#include "tests/host/scratch_volume.h"
#include "tests/support/run_program.h"
#include "tests/support/screen_root.h"
#include "tests/support/test_files.h"
#include "tests/support/test_main.h"
#include "volume/luks/policy.h"

class ProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void exitCodes()
    {
        const QStringList testBoot{"--test-boot"};
        const QStringList autologon{"--allow-autologon"};
        const std::tuple<const char *, int, QStringList> rows[] = {
            {"login\nstart\n", 0, {}},
            {"start\n", 1, {}},
            {"login\n", 1, {}},
            {"signal\nfail\n", 3, {}},
            {"login\nsignal\nstart\n", 3, {}},
            {"login\nstart\nsignal\nfail\n", 0, {}},   // the system has started, whatever the view says
            {"login\nstart\nsignal\nsignal\n", 3, {}}, // a second one ends it at once
            {"start\n", 4, testBoot},
            {"", 1, testBoot},
            {"automatic\nstart\n", 1, {}},
            {"automatic\nstart\n", 0, autologon},
            {"automatic\nwrong\nautomatic\nstart\n", 1, autologon}, // once only
        };
        for (const auto &[script, exitCode, options] : rows) {
            const int code = Play(QDir(m_root.path()), script, options);
            QVERIFY2(code == exitCode, script);
        }
    }

    // What one start leaves to the next, and what a volume's policy has to say.
    void startsInARow()
    {
        volume::Policy strict;
        strict.freeAttempts = 1;
        strict.autologonAllowed = false;
        for (const bool inHeader : {false, true}) {
            QDir root(m_root.filePath("root"));
            const auto makeRoot = [&] {
                root.removeRecursively();
                root.mkpath("pba");
                WriteFile(root.filePath("pba/last_usr.txt"), "");
            };
            const auto start = [&](const char *script) {
                return Play(
                    root, script,
                    {"--root", root.path(), "--state", inHeader ? "header" : "root", "--allow-autologon"});
            };
            makeRoot();
            QVERIFY(volume::SetPolicy(*m_scratch.Open(), {}) == volume::Error::None);
            QCOMPARE(start("automatic\nstart\n"), 0);
            QVERIFY(volume::SetPolicy(*m_scratch.Open(), strict) == volume::Error::None);
            QCOMPARE(start("automatic\nstart\n"), 1);
            QCOMPARE(start("wrong\nwrong\n"), 1);
            if (inHeader) // it lasts where the root does not
                makeRoot();
            QCOMPARE(start("login\nstart\n"), 1);
            QCOMPARE(QFile::exists(root.filePath("pba/state.json")), !inHeader);
            QCOMPARE(ReadFile(root.filePath("pba/last_usr.txt")), inHeader ? Utf16(u"boris") : "");
            QCOMPARE(ReadFile(root.filePath("pba/last_dmn.txt")), inHeader ? Utf16(u"OFFICE") : "");
        }
    }

    // Whatever stands where the memory should be: nobody is locked out.
    void strangeMemories()
    {
        QTemporaryDir root;
        PbeSetFileRoot(root.path().toUtf8());
        const auto three = [](const host::LoginState &) { return host::LoginState{3, 5}; };
        QVERIFY(host::FileStateStore().Update(three, {})); // makes its directory
        QCOMPARE(host::FileStateStore().Read().failures, 3u);
        for (const char *content :
             {"", "{", "[]", R"({"type":"pba-state","failures":-1,"failed":1e300,"domain":7})",
              R"({"type":"pba-state","failures":18446744073709551615,"failed":18446744073709551615})"}) {
            WriteFile(root.filePath("pba/state.json"), content);
            host::FileStateStore store;
            host::Clock clock([] { return 5; }, [] { return 5; });
            host::LoginThrottle throttle(store, clock, [] { return volume::Policy(); });
            QVERIFY2(throttle.BeginAttempt() <= 30, content);
            throttle.EndAttempt({});
            QCOMPARE(store.Read().failures, 0u);
        }
    }

    // Whatever stands where the view's files should be: only files are handed over, and none that lies
    // elsewhere to be written.
    void handedFiles()
    {
        const ScreenRoot root;
        PbeSetFileRoot(root.path().toUtf8());
        QCOMPARE(Handed(), QByteArrayList()); // there is not even the directory
        const QDir pba(root.filePath("pba"));
        pba.mkpath(".");
        QCOMPARE(Handed(), QByteArrayList{"last_dmn.txt rw"});
        QVERIFY(pba.isEmpty()); // nothing was written
        WriteFile(root.filePath("elsewhere"), "");
        mkfifo(pba.filePath("settings.bin").toUtf8(), S_IRUSR | S_IWUSR);
        pba.mkpath("autolgn.txt");
        QVERIFY(QFile::link(root.filePath("elsewhere"), pba.filePath("last_usr.txt")));
        QVERIFY(QFile::link("/dev/zero", pba.filePath("last_dmn.txt")));
        QCOMPARE(Handed(), QByteArrayList{"last_usr.txt r"});
        for (const char *name : {"settings.bin", "last_usr.txt", "last_dmn.txt"}) {
            QVERIFY(QFile::remove(pba.filePath(name)));
            WriteFile(pba.filePath(name), "");
        }
        QCOMPARE(Handed(), (QByteArrayList{"settings.bin r", "last_usr.txt rw", "last_dmn.txt rw"}));
        QVERIFY(QFile::exists(pba.filePath("last_dmn.txt")));
    }

    void wrongUsage()
    {
        CompareFailure(Run(PBA_HOST, {}), 2, "--root is required");
        const QStringList rows[] = {{"--bogus", "", "--bogus"},
                                    {"--volume", "/no/volume", "/no/volume: there is no such file"},
                                    {"--volume", "/", "not a LUKS2 volume"},
                                    {"--log", "/no\n/log", "/no\\u{a}/log: cannot be written"},
                                    {"--mapper-name", "../x", "127 letters"},
                                    {"--module", "/", "/ is no file"},
                                    {"--module", PBA_HOST, "view module"},
                                    {"--module", LIBRARY, "lacks the exports"}};
        for (const QStringList &row : rows)
            CompareFailure(Run(PBA_HOST, Usual() + row.first(2)), 2, row.last().toUtf8());
        const QStringList displays[] = {
            {"", "DISPLAY=", "DISPLAY is not set"},
            {"xcb", "DISPLAY=:no", ":no does not answer"},
            {"linuxfb:fb=/dev/null", "DISPLAY=", "/dev/null: there is no framebuffer"},
            {"nothing", "DISPLAY=", "knows no display \"nothing\""}};
        for (const QStringList &row : displays) {
            QStringList arguments{"QT_QPA_PLATFORM=" + row[0], row[1], PBA_HOST};
            CompareFailure(Run("env", arguments + Usual()), 1, row[2].toUtf8());
        }
    }

private:
    // The exit code of a start in `root`, where the script lies. For each signal that it asks for it gets
    // one, of two kinds: a second one of a kind may come to nothing.
    int Play(const QDir &root, const char *script, const QStringList &options) const
    {
        const QString go = root.filePath("pba/go");
        root.mkpath("pba");
        WriteFile(root.filePath("pba/script"), script);
        mkfifo(go.toUtf8(), S_IRUSR | S_IWUSR | S_IROTH);
        QFile onward(go);
        QProcess process;
        process.setWorkingDirectory(root.path());
        process.setReadChannel(QProcess::StandardError);
        process.start(PBA_HOST, Usual() + options);
        if (!onward.open(QFile::ReadWrite | QFile::Unbuffered))
            qFatal("it cannot go on");
        for (int signal = SIGTERM; process.waitForReadyRead(120000);) {
            if (process.readAll().contains("signal\n")) {
                kill(static_cast<pid_t>(process.processId()), std::exchange(signal, SIGHUP));
                onward.write("\n");
            }
        }
        process.waitForFinished();
        return process.exitStatus() == QProcess::NormalExit && process.readAllStandardOutput().isEmpty()
                   ? process.exitCode()
                   : -1;
    }
    // What a screen gets while automatic logons are allowed, by name, and what for; then nothing more is
    // left.
    static QByteArrayList Handed()
    {
        QByteArrayList found;
        const host::HandedFiles files(true);
        const std::vector<int> descriptors = files.Descriptors();
        for (std::size_t i = 0; i < descriptors.size(); ++i) {
            const QByteArray word = files.Arguments()[2 * i + 1].c_str();
            const bool writable = (fcntl(descriptors[i], F_GETFL) & O_ACCMODE) == O_RDWR;
            found += word.first(word.indexOf('=')) + (writable ? " rw" : " r");
        }
        host::HandedFiles::RemoveUnwritten();
        return found;
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

    ScreenRoot m_root;
    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(ProgramTest);

#include "tst_program.moc"
