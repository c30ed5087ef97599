// The view's files: which names are taken, what is opened and what is refused without waiting.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "pbe/files.h"

class TestFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Names()
    {
        const struct
        {
            const char *root;
            const char16_t *path;
            const char *file; // Empty: refused.
        } rows[] = {{"/r//", u"\\pba\\a", "/r/pba/a"},
                    {"/", u"\\pba\\a", "/pba/a"},
                    {"/r", u"\\größe\U0001F511", "/r/größe\U0001F511"},
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

    void Opening()
    {
        QTemporaryDir root;
        QVERIFY(QDir::setCurrent(root.path()) && QDir().mkdir(u"directory"_qs));
        QFile file(u"file"_qs);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("old text") == 8);
        file.close();
        QVERIFY(QFile::link(u"file"_qs, u"link"_qs) && QFile::link(u"missing"_qs, u"dangling"_qs));
        QCOMPARE(mkfifo("fifo", 0600), 0);
        // A relative root is made absolute, and stays where nothing is said.
        PbeSetFileRoot(".");
        PbeSetFileRoot("");
        QVERIFY(QDir::setCurrent(u"/"_qs));
        const struct
        {
            const char16_t *path;
            bool exists;
            kro::result_t reading;
            kro::result_t writing;
        } rows[] = {{u"\\none\\none", false, kro::kNotFound, kro::kNotFound},
                    {u"\\file\\a", false, kro::kNotFound, kro::kNotFound},
                    {u"\\directory", true, kro::kAccessDenied, kro::kAccessDenied},
                    {u"\\fifo", true, kro::kAccessDenied, kro::kAccessDenied},
                    {u"\\link", true, kro::kOk, kro::kAccessDenied},
                    {u"\\dangling", true, kro::kNotFound, kro::kAccessDenied},
                    {u"\\directory\\..\\file", false, kro::kInvalidArgument, kro::kInvalidArgument},
                    {u"\\new", false, kro::kNotFound, kro::kOk},
                    {u"\\file", true, kro::kOk, kro::kOk}};
        for (const auto &row : rows) {
            QCOMPARE(PbeFileExists(row.path), row.exists);
            int descriptor = 0;
            QCOMPARE(PbeOpenFileForReading(row.path, &descriptor), row.reading);
            QCOMPARE(descriptor >= 0, row.reading == kro::kOk);
            close(descriptor);
            QCOMPARE(PbeOpenFileForWriting(row.path, &descriptor), row.writing);
            QCOMPARE(descriptor >= 0, row.writing == kro::kOk);
            close(descriptor);
        }
        QCOMPARE(QFileInfo(root.filePath(u"file"_qs)).size(), 0);
        int descriptor = -1;
        QCOMPARE(PbeOpenFileForReading(u"\\file", &descriptor), kro::kOk);
        QVERIFY(!(fcntl(descriptor, F_GETFL) & O_NONBLOCK));
        QVERIFY(fcntl(descriptor, F_GETFD) & FD_CLOEXEC);
        close(descriptor);
    }
};

QTEST_APPLESS_MAIN(TestFiles)
#include "tst_platform_files.moc"
