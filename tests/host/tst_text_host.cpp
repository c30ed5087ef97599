// SPDX-License-Identifier: Apache-2.0
// pba_host at a terminal, with a real volume and the real screen of terminals.
#include <csignal>

#include "tests/host/scratch_volume.h"
#include "tests/support/screen_root.h"
#include "tests/support/terminal_program.h"
#include "tests/support/test_files.h"
#include "tests/support/test_main.h"

namespace {

class Line : public TerminalProgram
{
public:
    Line(const QString &root, const std::string &volume, const QByteArrayList &program = {PBA_HOST, "--text"})
        : TerminalProgram(program + QByteArrayList{"--root", root.toUtf8(), "--log", "/dev/null", "--volume",
                                                   QByteArray::fromStdString(volume)})
    {
    }
    void LogIn(const QByteArray &password)
    {
        Answer("User name", "anna");
        Answer("Domain", "");
        Answer("Password: ", password);
    }
    void KillScreen() const
    {
        const QString main = QStringLiteral("/proc/%1/task/%1/children").arg(process);
        const pid_t screen = ReadFile(main).simplified().toInt();
        if (screen <= 0 || kill(screen, SIGKILL) != 0)
            qFatal("there is no screen");
    }
};

} // namespace

class TextHostTest : public QObject
{
    Q_OBJECT

private slots:
    // Breaking the screen gets nobody around the delay, and the next one leads to the system.
    void delayedExpiredAndStarted()
    {
        volume::Policy policy;
        policy.freeAttempts = 0;
        policy.delaySeconds = volume::kMaxDelaySeconds;
        const ScratchVolume scratch;
        ScratchVolume::Expire(*scratch.Open(), policy);
        Line line(m_root.path(), scratch.Path());
        line.LogIn("wrong one");
        line.Expect("Wrong user name or password");
        for (int i = 0; i < 2; ++i) {
            line.LogIn(ScratchVolume::kPassword);
            line.Expect("Seconds left");
            line.KillScreen();
        }
        policy.delaySeconds = 0;
        policy.expiryDays = 1;
        QVERIFY(volume::SetPolicy(*scratch.Open(), policy) == volume::Error::None);
        line.LogIn(ScratchVolume::kPassword);
        line.Expect("expired");
        line.Answer("New password: ", "paper ship");
        line.Answer("once more: ", "paper ship");
        line.Expect("The operating system starts.");
        QCOMPARE(line.End(), 0);
        QCOMPARE(scratch.Login({"", "anna"}, "paper ship"), volume::Error::None);
        QVERIFY2(!line.seen.contains("wrong one") && !line.seen.contains("ship"), line.seen);
    }

    // In the middle of a derivation, which takes a second: once too often, and a signal, as at the prompt.
    void ends()
    {
        QTemporaryDir directory;
        const std::string path = directory.filePath("volume.img").toStdString();
        QFile file(QString::fromStdString(path));
        std::unique_ptr<volume::Header> made;
        QVERIFY(file.open(QFile::WriteOnly) && file.resize(20 * 1024 * 1024));
        QCOMPARE(volume::Header::Create(path, &made), volume::Error::None);
        const auto cost = volume::KeyCost::ForPassword(1000);
        QCOMPARE(volume::Users(*made).Add({"", "anna"}, {}, MakeSecret("paper boat"), cost),
                 volume::Error::None);
        Line broken(m_root.path(), path);
        for (int i = 0; i < 3; ++i) {
            broken.LogIn("paper boat");
            broken.Expect("Please wait.");
            broken.KillScreen();
        }
        broken.Expect("pba_host: the screen has ended too often, the last time by the signal 9");
        QCOMPARE(broken.End(), 1);
        for (const bool derives : {false, true}) {
            Line line(m_root.path(), path);
            if (derives)
                line.LogIn("paper boat");
            line.Expect(derives ? "Please wait." : "User name");
            kill(line.process, SIGTERM);
            QCOMPARE(line.End(), 3);
        }
    }

    // Of a screen that cannot draw the place is taken by the one that asks.
    void standsIn()
    {
        const ScratchVolume scratch;
        const QByteArrayList withoutDisplay{"/usr/bin/env", "DISPLAY=", "QT_QPA_PLATFORM=xcb", PBA_HOST};
        Line line(m_root.path(), scratch.Path(), withoutDisplay);
        line.Expect("DISPLAY is not set");
        line.LogIn(ScratchVolume::kPassword);
        line.Expect("The operating system starts.");
        QCOMPARE(line.End(), 0);
    }

private:
    ScreenRoot m_root;
};

PBA_REGISTER_TEST(TextHostTest);

#include "tst_text_host.moc"
