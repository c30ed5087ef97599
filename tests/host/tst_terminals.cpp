// SPDX-License-Identifier: Apache-2.0
// What becomes of a console that a screen draws on, whatever ends the program. Few computers that build have
// one to spare: the kernel's part is played here, for a terminal at standard input.
#include <csignal>
#include <cstdarg>

#include <linux/kd.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <QTest>

#include "host/service/terminals.h"
#include "tests/support/test_main.h"

namespace {

// Shared with the program under test.
struct Console
{
    bool there = false;
    int display = KD_TEXT;
    int keyboard = K_XLATE;
    char switching = VT_AUTO;
    int lights = 0;
};
Console *s_console = static_cast<Console *>(
    mmap(nullptr, sizeof(Console), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));

int Play(unsigned long request, void *argument)
{
    const int value = static_cast<int>(reinterpret_cast<std::intptr_t>(argument));
    switch (request) {
    case KDGETMODE:
        *static_cast<int *>(argument) = s_console->display;
        break;
    case KDGKBMODE:
        *static_cast<int *>(argument) = s_console->keyboard;
        break;
    case VT_GETMODE:
        static_cast<vt_mode *>(argument)->mode = s_console->switching;
        break;
    case KDSETMODE:
        s_console->display = value;
        break;
    case KDSKBMODE:
        s_console->keyboard = value;
        break;
    case VT_SETMODE:
        s_console->switching = static_cast<vt_mode *>(argument)->mode;
        break;
    case KDSETLED:
        s_console->lights = value;
        break;
    }
    return 0;
}

bool IsPlayed(int descriptor, unsigned long request)
{
    const unsigned long type = request & 0xFF00;
    return s_console->there && descriptor == STDIN_FILENO && (type == ('K' << 8) || type == ('V' << 8));
}

} // namespace

extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    if (IsPlayed(descriptor, request))
        return Play(request, argument);
    return static_cast<int>(syscall(SYS_ioctl, descriptor, request, argument));
}

class TerminalsTest : public QObject
{
    Q_OBJECT

private slots:
    void restored_data()
    {
        QTest::addColumn<QByteArray>("platform");
        QTest::addColumn<int>("end"); // a signal; 0 as usual
        QTest::addColumn<int>("display");
        QTest::addColumn<int>("keyboard");
        QTest::newRow("as usual") << QByteArray("linuxfb:fb=/dev/fb0") << 0 << KD_GRAPHICS << K_OFF;
        QTest::newRow("by a fault") << QByteArray("linuxfb") << SIGSEGV << KD_GRAPHICS << K_OFF;
        QTest::newRow("by abort") << QByteArray("linuxfb") << SIGABRT << KD_GRAPHICS << K_OFF;
        QTest::newRow("by quit") << QByteArray("linuxfb") << SIGQUIT << KD_GRAPHICS << K_OFF;
        QTest::newRow("not drawn on") << QByteArray("xcb") << 0 << KD_TEXT << K_XLATE;
    }
    void restored()
    {
        QFETCH(QByteArray, platform);
        QFETCH(int, end);
        *s_console = {true, KD_TEXT, K_XLATE, VT_AUTO, 0};
        const auto [during, status, same] = Draw(platform, end);
        QTEST(during.display, "display");
        QTEST(during.keyboard, "keyboard");
        QCOMPARE(WIFSIGNALED(status) ? WTERMSIG(status) : 0, end);
        QCOMPARE(s_console->display, KD_TEXT);
        QCOMPARE(s_console->keyboard, K_XLATE);
        QVERIFY(same);
    }

    // One that was killed while it drew has left the console so, but others draw there, too.
    void foundDead()
    {
        for (const char switching : {VT_AUTO, VT_PROCESS}) {
            *s_console = {true, KD_GRAPHICS, K_OFF, switching, 0};
            Draw("linuxfb", 0);
            QCOMPARE(s_console->display, switching == VT_AUTO ? KD_TEXT : KD_GRAPHICS);
            QCOMPARE(s_console->keyboard, switching == VT_AUTO ? K_UNICODE : K_OFF);
            QCOMPARE(s_console->switching, switching);
        }
    }

private:
    struct Drawn
    {
        Console during;
        int status;
        bool same; // the terminal's settings, and nothing left of what was typed
    };

    // In a program of its own.
    static Drawn Draw(const QByteArray &platform, int end)
    {
        int master = -1, slave = -1, ends[2];
        if (openpty(&master, &slave, nullptr, nullptr, nullptr) != 0 || pipe(ends) != 0)
            qFatal("no terminal");
        termios before{}, after{};
        tcgetattr(slave, &before);
        const pid_t program = fork();
        if (program == 0)
            qputenv("QT_QPA_PLATFORM", platform);
        if (program == 0)
            DrawAndEnd(slave, ends[1], end);
        Drawn drawn{};
        close(ends[1]);
        if (read(ends[0], &drawn.during, sizeof drawn.during) != sizeof drawn.during)
            qFatal("nothing drawn");
        waitpid(program, &drawn.status, 0);
        tcgetattr(slave, &after);
        drawn.same = after.c_lflag == before.c_lflag;
        for (const int descriptor : {master, slave, ends[0]})
            close(descriptor);
        return drawn;
    }

    [[noreturn]] static void DrawAndEnd(int terminal, int report, int end)
    {
        dup2(terminal, STDIN_FILENO);
        std::signal(end, SIG_DFL); // the test's own would only report it
        {
            const host::Terminals terminals;
            terminals.GiveToPicture();
            termios settings{};
            tcgetattr(STDIN_FILENO, &settings);
            settings.c_lflag &= ~static_cast<tcflag_t>(ECHO | ICANON);
            tcsetattr(STDIN_FILENO, TCSANOW, &settings);
            if (write(report, s_console, sizeof *s_console) < 0)
                _exit(1);
            if (end != 0)
                std::raise(end);
        }
        _exit(0);
    }
};

PBA_REGISTER_TEST(TerminalsTest);

#include "tst_terminals.moc"
