// The log: what reaches its sink, and in how many writes. The log reads its environment once a process, so
// every case runs in a process of its own, whose standard error is a socket that keeps writes apart.
#include <functional>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <QTest>

#include "pbe/log.h"

namespace {

const QByteArray kLine = "PBAQT   a line\r\n";

void LogLine(std::uint32_t severity = 300)
{
    PbeLogMessage(severity, 5, "PBAQT   ", "a line\r\n");
}

QList<QByteArray> Writes(const char *variable, const QByteArray &value, const std::function<void()> &work)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) != 0)
        return {"no socket pair"};
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDERR_FILENO);
        unsetenv("PBE_LOG");
        unsetenv("PBE_LOG_SEVERITY");
        setenv(variable, value.constData(), 1);
        work();
        _exit(0);
    }
    close(ends[1]);
    QList<QByteArray> writes;
    char buffer[1024];
    for (ssize_t size = 0; (size = recv(ends[0], buffer, sizeof buffer, 0)) > 0;)
        writes.append(QByteArray(buffer, size));
    close(ends[0]);
    int status = 0;
    if (waitpid(child, &status, 0) != child || status != 0)
        writes.append("the process failed");
    return writes;
}

QByteArray Read(const QByteArray &path)
{
    QFile file(QString::fromUtf8(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Severity()
    {
        const QPair<const char *, std::uint32_t> rows[] = {{"700", 700}, {"0", 0},      {"4294967296", 300},
                                                           {"-1", 300},  {"700 ", 300}, {"", 300}};
        for (const auto &[value, severity] : rows) {
            const auto writes = Writes("PBE_LOG_SEVERITY", value, [severity = severity] {
                LogLine(severity);
                LogLine(severity + 1);
                PbeSetLogSeverity(severity + 2);
                LogLine(severity + 2);
                LogLine(severity + 3);
            });
            QCOMPARE(writes, (QList<QByteArray>{kLine, kLine}));
        }
    }

    void RefusedSink()
    {
        QCOMPARE(mkfifo(Path("fifo").constData(), 0600), 0);
        for (const char *name : {"fifo", "", "missing/log"}) {
            const QByteArray path = Path(name);
            const auto writes = Writes("PBE_LOG", path, [path] {
                LogLine();
                if (PbeSetLogFile(path.constData()) == kro::kAccessDenied)
                    LogLine();
            });
            QCOMPARE(writes, (QList<QByteArray>{"PBE     cannot log to " + path + "\r\n", kLine, kLine}));
        }
    }

    void AppendsToPrivateFiles()
    {
        for (int run = 1; run <= 2; ++run) {
            const auto writes = Writes("PBE_LOG", Path("first"), [this] {
                LogLine();
                PbeSetLogFile(Path("second").constData());
                LogLine();
                LogLine();
            });
            QCOMPARE(writes, QList<QByteArray>());
            QCOMPARE(Read(Path("first")), kLine.repeated(run));
            QCOMPARE(Read(Path("second")), kLine.repeated(2 * run));
        }
        struct stat status = {};
        QCOMPARE(stat(Path("first").constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777, 0600U);
    }

private:
    QByteArray Path(const char *name) const { return m_directory.filePath(QString::fromUtf8(name)).toUtf8(); }

    QTemporaryDir m_directory;
};

QTEST_APPLESS_MAIN(TestLog)
#include "tst_platform_log.moc"
