// SPDX-License-Identifier: Apache-2.0
// The view's files and the log's: which names are taken, what is opened, what is refused without waiting, and
// in how many writes a line is written. The log reads its environment once a process, so every case of it
// runs in a process of its own, whose standard error is a socket that keeps writes apart.
#include <functional>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "pbe/files.h"
#include "pbe/log.h"

namespace {

using Lines = QList<QByteArray>;
const QByteArray kLine = "PBAQT   a line\r\n";

void LogLine(std::uint32_t severity = 300)
{
    PbeLogMessage(severity, 5, "PBAQT   ", "a line\r\n");
}

Lines Writes(const char *variable, const QByteArray &value, const std::function<void()> &work)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) != 0)
        return {"no socket pair"};
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDERR_FILENO);
        unsetenv("PBE_LOG");
        setenv(variable, value.constData(), 1);
        work();
        _exit(0);
    }
    close(ends[1]);
    Lines writes;
    char buffer[1024];
    for (ssize_t size = 0; (size = recv(ends[0], buffer, sizeof buffer, 0)) > 0;)
        writes.append(QByteArray(buffer, size));
    close(ends[0]);
    int status = 0;
    if (waitpid(child, &status, 0) != child || status != 0)
        writes.append("the process failed");
    return writes;
}

} // namespace

class TestFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(m_root.path()) && QDir().mkdir(u"directory"_qs));
        QFile file(u"file"_qs);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("old text") == 8);
        QVERIFY(QFile::link(u"file"_qs, u"link"_qs) && QFile::link(u"missing"_qs, u"dangling"_qs));
        QCOMPARE(mkfifo("fifo", 0600), 0);
    }

    void Names()
    {
        const struct
        {
            const char *root;
            const char16_t *path;
            const char *file; // Empty: refused.
        } rows[] = {{"/r//", u"\\pba\\a", "/r/pba/a"},
                    {"/", u"\\größe\U0001F511", "/größe\U0001F511"},
                    {"/r", u"\\..a\\b..\\...", "/r/..a/b../..."},
                    {"/r", u"\\pba\\..\\..\\etc", ""},
                    {"/r", u"\\pba\\..", ""},
                    {"/r", u"\\pba/../../etc", ""},
                    {"/r", u"pba\\a", ""},
                    {"/r", u"", ""}};
        for (const auto &row : rows) {
            PbeSetFileRoot(row.root);
            kro::string_t file;
            QCOMPARE(PbeGetFilePath(row.path, &file), *row.file ? kro::kOk : kro::kInvalidArgument);
            QCOMPARE(QByteArray(file.Data()), row.file);
        }
    }

    // A relative root is made absolute, and stays where nothing is said.
    void Opening()
    {
        PbeSetFileRoot(".");
        PbeSetFileRoot("");
        QVERIFY(QDir::setCurrent(u"/"_qs));
        const struct
        {
            const char16_t *path;
            bool exists;
            kro::result_t reading;
            kro::result_t writing;
        } rows[] = {{u"\\file\\a", false, kro::kNotFound, kro::kNotFound},
                    {u"\\directory", true, kro::kAccessDenied, kro::kAccessDenied},
                    {u"\\fifo", true, kro::kAccessDenied, kro::kAccessDenied},
                    {u"\\link", true, kro::kOk, kro::kAccessDenied},
                    {u"\\dangling", true, kro::kNotFound, kro::kAccessDenied},
                    {u"\\directory\\..\\file", false, kro::kInvalidArgument, kro::kInvalidArgument},
                    {u"\\new", false, kro::kNotFound, kro::kOk},
                    {u"\\file", true, kro::kOk, kro::kOk}};
        int descriptor = 0;
        for (const auto &row : rows) {
            QCOMPARE(PbeFileExists(row.path), row.exists);
            QCOMPARE(PbeOpenFileForReading(row.path, &descriptor), row.reading);
            close(descriptor);
            QCOMPARE(PbeOpenFileForWriting(row.path, &descriptor), row.writing);
            close(descriptor);
        }
        QCOMPARE(QFileInfo(m_root.filePath(u"file"_qs)).size(), 0);
        QCOMPARE(PbeOpenFileForReading(u"\\file", &descriptor), kro::kOk);
        QVERIFY(!(fcntl(descriptor, F_GETFL) & O_NONBLOCK));
        QVERIFY(fcntl(descriptor, F_GETFD) & FD_CLOEXEC);
        close(descriptor);
        QVERIFY(QDir::setCurrent(m_root.path()));
    }

    // Of the descriptors given, those that are refused stay the test's.
    void FilesOfTheHost()
    {
        PbeSetFileRoot("/nowhere");
        const int reading = open("link", O_RDONLY | O_CREAT, 0600), fifo = open("fifo", O_RDWR);
        const int both = open("both", O_RDWR | O_CREAT | O_TRUNC, 0600), path = open("both", O_PATH);
        const struct
        {
            const char16_t *path;
            int descriptor;
            kro::result_t used, reading, writing;
        } rows[] = {
            {u"\\a", -1, kro::kInvalidArgument, kro::kNotFound, kro::kNotFound},
            {u"\\a", 1023, kro::kInvalidArgument, kro::kNotFound, kro::kNotFound},
            {u"\\..\\a", reading, kro::kInvalidArgument, kro::kInvalidArgument, kro::kInvalidArgument},
            {u"\\a", fifo, kro::kAccessDenied, kro::kNotFound, kro::kNotFound},
            {u"\\p", path, kro::kOk, kro::kAccessDenied, kro::kAccessDenied},
            {u"\\a", reading, kro::kOk, kro::kOk, kro::kAccessDenied},
            {u"\\b", reading, kro::kInvalidArgument, kro::kNotFound, kro::kNotFound},
            {u"\\a", both, kro::kOk, kro::kOk, kro::kOk},
            {u"\\a", both, kro::kOk, kro::kOk, kro::kOk}};
        int opened = -1;
        for (const auto &row : rows) {
            QCOMPARE(PbeUseFile(row.path, row.descriptor), row.used);
            QCOMPARE(PbeOpenFileForReading(row.path, &opened), row.reading);
            close(opened);
            QCOMPARE(PbeOpenFileForWriting(row.path, &opened), row.writing);
            close(opened);
        }
        QCOMPARE(fcntl(reading, F_GETFD), -1);
        QVERIFY(PbeFileExists(u"\\a") && (fcntl(both, F_GETFD) & FD_CLOEXEC));
        for (const QByteArray &text : {QByteArray("long"), QByteArray("new")}) {
            QCOMPARE(PbeOpenFileForWriting(u"\\a", &opened), kro::kOk);
            QCOMPARE(write(opened, text.data(), static_cast<std::size_t>(text.size())), text.size());
            close(opened);
            QCOMPARE(PbeOpenFileForReading(u"\\a", &opened), kro::kOk);
            char content[8];
            QCOMPARE(QByteArray(content, read(opened, content, sizeof content)), text);
            close(opened);
        }
        close(fifo);
    }

    void LogSeverity()
    {
        const QPair<const char *, std::uint32_t> rows[] = {{"700", 700}, {"0", 0},      {"4294967296", 300},
                                                           {"-1", 300},  {"700 ", 300}, {"", 300}};
        for (const auto &[value, severity] : rows) {
            const auto log = [severity = severity] {
                LogLine(severity);
                LogLine(severity + 1);
            };
            QCOMPARE(Writes("PBE_LOG_SEVERITY", value, log), Lines{kLine});
        }
    }

    void RefusedLog()
    {
        for (const char *path : {"fifo", "directory", "missing/log"}) {
            const auto log = [path] {
                LogLine();
                if (PbeSetLogFile(path) == kro::kAccessDenied)
                    LogLine();
            };
            const QByteArray notice = QByteArray("PBE     cannot log to ") + path + "\r\n";
            QCOMPARE(Writes("PBE_LOG", path, log), (Lines{notice, kLine, kLine}));
        }
    }

    // Each is tried when the log has a file of its own and when it has none.
    void LogDescriptors()
    {
        const auto log = [] {
            const auto use = [](int descriptor, kro::result_t expected) {
                if (PbeSetLogDescriptor(descriptor) != expected)
                    _exit(1);
                LogLine();
            };
            for (int round = 0; round < 2; ++round) {
                use(-1, kro::kInvalidArgument);
                use(1023, kro::kInvalidArgument);
                use(open("fifo", O_RDWR), kro::kAccessDenied);
                use(open("/dev/null", O_RDONLY), kro::kAccessDenied);
                use(open("/dev/null", O_PATH), kro::kAccessDenied);
                use(open("third", O_WRONLY | O_CREAT, 0600), kro::kOk);
                use(PbeGetLogDescriptor(), kro::kOk);
                use(STDERR_FILENO, kro::kOk);
                use(open("third", O_WRONLY), kro::kOk);
            }
        };
        QCOMPARE(Writes("PBE_LOG", "", log), Lines(7, kLine));
        QCOMPARE(QFileInfo(u"third"_qs).size(), kLine.size() * 11);
    }

    void LogAppendsToPrivateFiles()
    {
        const auto log = [] {
            LogLine();
            PbeSetLogFile("second");
            LogLine();
            LogLine();
        };
        for (int run = 1; run <= 2; ++run)
            QCOMPARE(Writes("PBE_LOG", "first", log), Lines());
        for (const auto &[name, lines] : {std::pair(u"first"_qs, 2), std::pair(u"second"_qs, 4)}) {
            QFile file(name);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QCOMPARE(file.readAll(), kLine.repeated(lines));
            QVERIFY(!(file.permissions() &
                      ~(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser)));
        }
    }

private:
    QTemporaryDir m_root;
};

QTEST_APPLESS_MAIN(TestFiles)
#include "tst_platform_files.moc"
