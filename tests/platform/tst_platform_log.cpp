// The log: what reaches its sink, and in how many writes. The log reads its environment once a process, so
// every case runs in a process of its own, whose standard error is a socket that keeps writes apart.
#include <functional>
#include <thread>
#include <vector>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <QTest>

#include "pbe/log.h"

namespace {

const QByteArray kLine = "PBAQT   a line\r\n";

void LogLine(std::uint32_t severity)
{
    PbeLogMessage(severity, 5, "PBAQT   ", "a line\r\n");
}

using Environment = QMap<QByteArray, QByteArray>;

QList<QByteArray> Writes(const Environment &environment, const std::function<void()> &work)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) != 0)
        return {"no socket pair"};
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDERR_FILENO);
        unsetenv("PBE_LOG");
        unsetenv("PBE_LOG_SEVERITY");
        for (auto entry = environment.begin(); entry != environment.end(); ++entry)
            setenv(entry.key().constData(), entry.value().constData(), 1);
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
    void Severity_data();
    void Severity();
    void HostChoosesSeverity();
    void RefusedSink_data();
    void RefusedSink();
    void AppendsToPrivateFile();
    void HostChangesFile();
    void LinesOfThreadsStayWhole();

private:
    QByteArray Path(const char *name) const { return m_directory.filePath(QString::fromUtf8(name)).toUtf8(); }

    QTemporaryDir m_directory;
};

void TestLog::Severity_data()
{
    QTest::addColumn<Environment>("environment");
    QTest::addColumn<quint32>("severity");
    QTest::newRow("nothing said") << Environment{} << 300U;
    const auto row = [](const char *value, quint32 severity) {
        QTest::newRow(*value ? value : "empty") << Environment{{"PBE_LOG_SEVERITY", value}} << severity;
    };
    row("700", 700);
    row("0", 0);
    row("4294967294", 4294967294U);
    row("4294967296", 300);
    row("-1", 300);
    row("700 ", 300);
    row("0x300", 300);
    row("all", 300);
    row("", 300);
}

void TestLog::Severity()
{
    QFETCH(Environment, environment);
    QFETCH(quint32, severity);
    const auto writes = Writes(environment, [severity] {
        LogLine(severity);
        LogLine(severity + 1);
    });
    QCOMPARE(writes, QList<QByteArray>{kLine});
}

void TestLog::HostChoosesSeverity()
{
    const auto writes = Writes({{"PBE_LOG_SEVERITY", "900"}}, [] {
        LogLine(900);
        PbeSetLogSeverity(100);
        LogLine(101);
    });
    QCOMPARE(writes, QList<QByteArray>{kLine});
}

void TestLog::RefusedSink_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("directory") << Path("");
    QTest::newRow("in no directory") << Path("missing/log");
    QCOMPARE(mkfifo(Path("fifo").constData(), 0600), 0);
    QTest::newRow("fifo") << Path("fifo");
}

void TestLog::RefusedSink()
{
    QFETCH(QByteArray, path);
    const QByteArray notice = "PBE     cannot log to " + path + "\r\n";
    const auto ofEnvironment = Writes({{"PBE_LOG", path}}, [] {
        LogLine(300);
        LogLine(300);
    });
    QCOMPARE(ofEnvironment, (QList<QByteArray>{notice, kLine, kLine}));
    const auto ofHost = Writes({}, [path] {
        if (PbeSetLogFile(path.constData()) == kro::kAccessDenied)
            LogLine(300);
    });
    QCOMPARE(ofHost, QList<QByteArray>{kLine});
}

void TestLog::AppendsToPrivateFile()
{
    const QByteArray path = Path("log");
    for (int run = 1; run <= 2; ++run) {
        QCOMPARE(Writes({{"PBE_LOG", path}}, [] { LogLine(300); }), QList<QByteArray>());
        QCOMPARE(Read(path), kLine.repeated(run));
    }
    struct stat status
    {
    };
    QCOMPARE(stat(path.constData(), &status), 0);
    QCOMPARE(status.st_mode & 0777, 0600U);
}

void TestLog::HostChangesFile()
{
    const QByteArray first = Path("first");
    const QByteArray second = Path("second");
    const QByteArray unused = Path("unused");
    const auto writes = Writes({{"PBE_LOG", unused}}, [&] {
        PbeSetLogFile(first.constData());
        LogLine(300);
        PbeSetLogFile(second.constData());
        LogLine(300);
        LogLine(300);
    });
    QCOMPARE(writes, QList<QByteArray>());
    QCOMPARE(Read(first), kLine);
    QCOMPARE(Read(second), kLine + kLine);
    QVERIFY(!QFile::exists(QString::fromUtf8(unused)));
}

void TestLog::LinesOfThreadsStayWhole()
{
    constexpr int kThreads = 4;
    constexpr int kLines = 200;
    const QByteArray path = Path("threads");
    const QByteArray text = QByteArray(700, 'x') + "\r\n";
    Writes({{"PBE_LOG", path}}, [&text] {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&text] {
                for (int line = 0; line < kLines; ++line)
                    PbeLogMessage(300, 5, "PBAQT   ", text.constData());
            });
        }
    });
    QCOMPARE(Read(path), ("PBAQT   " + text).repeated(kThreads * kLines));
}

QTEST_APPLESS_MAIN(TestLog)
#include "tst_platform_log.moc"
