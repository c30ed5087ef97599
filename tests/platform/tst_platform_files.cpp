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
    void initTestCase();
    void init();
    void Names_data();
    void Names();
    void Opening_data();
    void Opening();
    void RootIsMadeAbsolute();
    void WritingEmptiesAndCreates();

private:
    QString Path(const QString &name) const { return m_root.filePath(u"pba/"_qs + name); }
    void Write(const QString &name) const;

    QTemporaryDir m_root;
};

void TestFiles::Write(const QString &name) const
{
    QFile file(Path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("old text"), 8);
}

void TestFiles::initTestCase()
{
    QVERIFY(QDir(m_root.path()).mkpath(u"pba/directory"_qs));
    Write(u"file"_qs);
    Write(u"größe"_qs);
    QVERIFY(QFile::link(Path(u"file"_qs), Path(u"link"_qs)));
    QVERIFY(QFile::link(Path(u"missing"_qs), Path(u"dangling"_qs)));
    QCOMPARE(mkfifo(Path(u"fifo"_qs).toUtf8().constData(), 0600), 0);
    QVERIFY(QFile::link(u"/dev/zero"_qs, Path(u"device"_qs)));
}

void TestFiles::init()
{
    PbeSetFileRoot(m_root.path().toUtf8().constData());
}

void TestFiles::Names_data()
{
    QTest::addColumn<QString>("root");
    QTest::addColumn<QString>("path");
    // Empty: the path is refused.
    QTest::addColumn<QString>("file");
    QTest::newRow("below a root") << u"/r"_qs << u"\\pba\\settings.bin"_qs << u"/r/pba/settings.bin"_qs;
    QTest::newRow("root with slashes") << u"/r//"_qs << u"\\pba\\a"_qs << u"/r/pba/a"_qs;
    QTest::newRow("the system's root") << u"/"_qs << u"\\pba\\a"_qs << u"/pba/a"_qs;
    QTest::newRow("beyond ASCII") << u"/r"_qs << u"\\größe\U0001F511"_qs << u"/r/größe\U0001F511"_qs;
    QTest::newRow("dots in names") << u"/r"_qs << u"\\..a\\b..\\..."_qs << u"/r/..a/b../..."_qs;
    QTest::newRow("way out") << u"/r"_qs << u"\\pba\\..\\..\\etc"_qs << QString();
    QTest::newRow("way out at the end") << u"/r"_qs << u"\\pba\\.."_qs << QString();
    QTest::newRow("way out in one component") << u"/r"_qs << u"\\pba/../../etc"_qs << QString();
    QTest::newRow("relative") << u"/r"_qs << u"pba\\a"_qs << QString();
    QTest::newRow("drive letter") << u"/r"_qs << u"C:\\pba\\a"_qs << QString();
    QTest::newRow("half a character") << u"/r"_qs << u"\\a"_qs + QChar(0xD83D) << QString();
    QTest::newRow("empty") << u"/r"_qs << u""_qs << QString();
}

void TestFiles::Names()
{
    QFETCH(QString, root);
    QFETCH(QString, path);
    QFETCH(QString, file);
    PbeSetFileRoot(root.toUtf8().constData());
    kro::string_t result;
    QCOMPARE(PbeGetFilePath(path.toStdU16String().c_str(), &result),
             file.isEmpty() ? kro::kInvalidArgument : kro::kOk);
    QCOMPARE(QString::fromUtf8(result.Data()), file);
}

void TestFiles::Opening_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("exists");
    QTest::addColumn<kro::result_t>("reading");
    QTest::addColumn<kro::result_t>("writing");
    const auto row = [](const char *name, const QString &path, bool exists, kro::result_t reading,
                        kro::result_t writing) {
        QTest::newRow(name) << path << exists << reading << writing;
    };
    row("file", u"\\pba\\file"_qs, true, kro::kOk, kro::kOk);
    row("beyond ASCII", u"\\pba\\größe"_qs, true, kro::kOk, kro::kOk);
    row("missing", u"\\pba\\none\\none"_qs, false, kro::kNotFound, kro::kNotFound);
    row("below a file", u"\\pba\\file\\a"_qs, false, kro::kNotFound, kro::kNotFound);
    row("directory", u"\\pba\\directory"_qs, true, kro::kAccessDenied, kro::kAccessDenied);
    row("fifo", u"\\pba\\fifo"_qs, true, kro::kAccessDenied, kro::kAccessDenied);
    row("device", u"\\pba\\device"_qs, true, kro::kAccessDenied, kro::kAccessDenied);
    row("link to a file", u"\\pba\\link"_qs, true, kro::kOk, kro::kAccessDenied);
    row("link to nothing", u"\\pba\\dangling"_qs, true, kro::kNotFound, kro::kAccessDenied);
    row("way out", u"\\pba\\..\\pba\\file"_qs, false, kro::kInvalidArgument, kro::kInvalidArgument);
}

void TestFiles::Opening()
{
    QFETCH(QString, path);
    QFETCH(bool, exists);
    const std::u16string wide = path.toStdU16String();
    QCOMPARE(PbeFileExists(wide.c_str()), exists);
    const auto check = [&](auto open, kro::result_t expected) {
        int descriptor = 0;
        QCOMPARE(open(wide.c_str(), &descriptor), expected);
        QCOMPARE(descriptor >= 0, !kro::Failed(expected));
        if (descriptor < 0)
            return;
        QVERIFY(!(fcntl(descriptor, F_GETFL) & O_NONBLOCK));
        QVERIFY(fcntl(descriptor, F_GETFD) & FD_CLOEXEC);
        close(descriptor);
    };
    QFETCH(kro::result_t, reading);
    check(PbeOpenFileForReading, reading);
    QFETCH(kro::result_t, writing);
    check(PbeOpenFileForWriting, writing);
}

void TestFiles::RootIsMadeAbsolute()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_root.path()));
    PbeSetFileRoot("pba");
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(PbeFileExists(u"\\fifo"));
    // Nothing said: the root stays.
    PbeSetFileRoot(nullptr);
    PbeSetFileRoot("");
    QVERIFY(PbeFileExists(u"\\fifo"));
}

void TestFiles::WritingEmptiesAndCreates()
{
    Write(u"long"_qs);
    for (const char16_t *path : {u"\\pba\\long", u"\\pba\\new"}) {
        int descriptor = -1;
        QCOMPARE(PbeOpenFileForWriting(path, &descriptor), kro::kOk);
        QCOMPARE(write(descriptor, "new", 3), 3);
        close(descriptor);
    }
    for (const QString &name : {u"long"_qs, u"new"_qs})
        QCOMPARE(QFileInfo(Path(name)).size(), 3);
}

QTEST_APPLESS_MAIN(TestFiles)
#include "tst_platform_files.moc"
