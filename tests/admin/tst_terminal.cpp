// Passwords at a terminal: asked twice, never echoed, and the echo is back however the program ends.
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>

#include "admin_tool.h"
#include "test_main.h"

namespace {

// pba_admin on a terminal of its own.
class Session
{
public:
    explicit Session(const QByteArray &volume)
    {
        m_process = forkpty(&m_terminal, nullptr, nullptr, nullptr);
        if (m_process == 0) {
            execl(PBA_ADMIN, "pba_admin", "volume", "create", volume.constData(), "--size", "20M", "--user",
                  "anna", "--iter-time", "1", nullptr);
            _exit(99);
        }
    }
    ~Session() { close(m_terminal); }

    bool WaitFor(const QByteArray &text)
    {
        while (!m_shown.contains(text) && ReadMore())
            ;
        return m_shown.contains(text);
    }
    void Type(const QByteArray &text)
    {
        QCOMPARE(write(m_terminal, text.constData(), text.size()), text.size());
    }
    bool Echoes() const
    {
        termios settings;
        return tcgetattr(m_terminal, &settings) == 0 && (settings.c_lflag & ECHO);
    }
    // The status of waitpid; everything shown is in Shown() then.
    int End()
    {
        while (ReadMore())
            ;
        int status = 0;
        waitpid(m_process, &status, 0);
        return status;
    }
    const QByteArray &Shown() const { return m_shown; }

private:
    bool ReadMore()
    {
        pollfd ready{m_terminal, POLLIN, 0};
        char buffer[256];
        const ssize_t count = poll(&ready, 1, 60000) == 1 ? read(m_terminal, buffer, sizeof buffer) : 0;
        if (count > 0)
            m_shown.append(buffer, count);
        return count > 0;
    }

    int m_terminal = -1;
    pid_t m_process = -1;
    QByteArray m_shown;
};

} // namespace

class TerminalTest : public QObject
{
    Q_OBJECT

private slots:
    void theNewPasswordIsAskedTwice()
    {
        QTemporaryDir directory;
        const QString path = directory.filePath("volume.img");
        for (const QByteArray again : {"Oops 2\n", "Oops 1\n"}) {
            Session session(path.toUtf8());
            QVERIFY(session.WaitFor("New password: ") && !session.Echoes());
            session.Type("Oops 1\n");
            QVERIFY(session.WaitFor("New password again: ") && !session.Echoes());
            session.Type(again);
            const int status = session.End();
            QCOMPARE(WIFEXITED(status) ? WEXITSTATUS(status) : -1, again == "Oops 1\n" ? 0 : 1);
            QCOMPARE(QFile::exists(path), again == "Oops 1\n");
            QVERIFY2(!session.Shown().contains("Oops"), session.Shown());
        }
    }

    void anInterruptRestoresTheEcho()
    {
        QTemporaryDir directory;
        Session session(directory.filePath("volume.img").toUtf8());
        // A descriptor of the terminal keeps its settings readable when the program is gone.
        QVERIFY(session.WaitFor("New password: ") && !session.Echoes());
        session.Type("\x03");
        const int status = session.End();
        QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT);
        QVERIFY(session.Echoes());
    }
};

PBA_REGISTER_TEST(TerminalTest);

#include "tst_terminal.moc"
