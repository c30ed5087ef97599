// Text files, the arguments file, and the memory of the last user and domain.
#include <boost/program_options/variables_map.hpp>

#include "log_lines.h"
#include "settings/arguments_file.h"
#include "settings/paths.h"
#include "settings/settings.h"
#include "settings/text_file.h"
#include "test_main.h"

using namespace pba;

namespace {

const QString kDomainPath = QString::fromUtf16(kLastDomainPath);

QByteArray Bytes(const char *bytes, int size)
{
    return QByteArray(bytes, size);
}

QString ErrorLine(const QString &function, const QString &code, const QString &message)
{
    return u"orvane %1(#) returned %2 error, message: %3\r\n"_qs.arg(function, code, message);
}

} // namespace

class FilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { fake_pbe::Reset(); }
    void WrittenText_data();
    void WrittenText();
    void ForeignText_data();
    void ForeignText();
    void TextFailures();
    void Arguments_data();
    void Arguments();
    void InvalidArguments();
    void LastDomain();
    void LastUser();
    void NothingWaitsForAFifo();
};

void FilesTest::WrittenText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QString() << QByteArray();
    QTest::newRow("letters") << u" aЯ"_qs << Bytes("\xFF\xFE \0a\0\x2F\x04", 8);
    QTest::newRow("outside the plane") << u"\U0001F511"_qs << Bytes("\xFF\xFE\x3D\xD8\x11\xDD", 6);
    QTest::newRow("line break") << u"a\nb"_qs
                                << Bytes("\xFF\xFE"
                                         "a\0\r\0\n\0b\0",
                                         10);
    QTest::newRow("lone CR") << u"a\rb"_qs
                             << Bytes("\xFF\xFE"
                                      "a\0\r\0b\0",
                                      8);
    QTest::newRow("CR LF in the text") << u"\r\n"_qs << Bytes("\xFF\xFE\r\0\r\0\n\0", 8);
    QTest::newRow("unit that looks like a line break") << u"\u0A0D"_qs << Bytes("\xFF\xFE\r\n", 4);
    QTest::newRow("mark as text") << u"\uFEFF"_qs << Bytes("\xFF\xFE\xFF\xFE", 4);
    QTest::newRow("lone surrogate") << QString(QChar(0xD83D)) << Bytes("\xFF\xFE\x3D\xD8", 4);
}

void FilesTest::WrittenText()
{
    QFETCH(QString, text);
    fake_pbe::WriteFile(kLastDomainPath, QByteArray(99, 'x'));
    QVERIFY(WriteTextToFile(kDomainPath, text));
    QTEST(fake_pbe::ReadFile(kLastDomainPath), "bytes");
    QString read = u"before"_qs;
    QVERIFY(ReadTextFromFile(kDomainPath, &read));
    QCOMPARE(read, text);
    QCOMPARE(fake_pbe::LogText(), QByteArray("WriteTextToFile(\"\\pba\\last_dmn.txt\")\r\n"
                                             "ReadTextFromFile(\"\\pba\\last_dmn.txt\")\r\n"));
}

void FilesTest::ForeignText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("big-endian with mark") << Bytes("\xFE\xFF\0a\x04\x2F\0\r\0\n", 10) << u"aЯ\n"_qs;
    QTest::newRow("little-endian without mark") << Bytes("a\0\x2F\x04", 4) << u"aЯ"_qs;
    QTest::newRow("only a mark") << Bytes("\xFF\xFE", 2) << QString();
    QTest::newRow("odd byte at the end") << Bytes("a\0b", 3) << u"a"_qs;
    QTest::newRow("one byte") << Bytes("a", 1) << QString();
    QTest::newRow("lone CR and LF") << Bytes("\r\0a\0\n\0\n\0\r\0", 10) << u"\ra\n\n\r"_qs;
}

void FilesTest::ForeignText()
{
    QFETCH(QByteArray, bytes);
    fake_pbe::WriteFile(kLastDomainPath, bytes);
    QString read;
    QVERIFY(ReadTextFromFile(kDomainPath, &read));
    QTEST(read, "text");
}

void FilesTest::TextFailures()
{
    QString text = u"kept"_qs;
    QVERIFY(!ReadTextFromFile(u"\\pba\\é.txt"_qs, &text));
    QVERIFY(!ReadTextFromFile(u"\\pba\\help"_qs, &text));
    QVERIFY(!WriteTextToFile(u"\\pba\\none\\a.txt"_qs, text));
    QCOMPARE(text, u"kept"_qs);
    const QString expected =
        u"ReadTextFromFile(\"\\pba\\*.txt\")\r\n"_qs +
        ErrorLine(u"ReadTextFromFile"_qs, u"0x8000004C"_qs, u"File \"\\pba\\*.txt\" does not exist."_qs) +
        u"ReadTextFromFile(\"\\pba\\help\")\r\n"_qs +
        ErrorLine(u"ReadTextFromFile"_qs, u"0x80000045"_qs,
                  u"File \"\\pba\\help\" cannot be opened for reading."_qs) +
        u"WriteTextToFile(\"\\pba\\none\\a.txt\")\r\n"_qs +
        ErrorLine(u"WriteTextToFile"_qs, u"0x80000045"_qs,
                  u"File \"\\pba\\none\\a.txt\" cannot be opened for writing."_qs);
    QCOMPARE(LogWithoutLineNumbers(), expected);
}

void FilesTest::Arguments_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<int>("testMode"); // -1: not given
    QTest::newRow("on") << QByteArray("test-mode=true\n") << true << 1;
    QTest::newRow("off, blanks, comment") << QByteArray(" test-mode = OFF # now\r\n") << true << 0;
    QTest::newRow("no line break at the end") << QByteArray("#\n\ntest-mode=1") << true << 1;
    QTest::newRow("empty") << QByteArray() << true << -1;
    QTest::newRow("comments") << QByteArray("# test-mode=true\n") << true << -1;
    QTest::newRow("no boolean") << QByteArray("test-mode=maybe\n") << false << -1;
    QTest::newRow("given twice") << QByteArray("test-mode=1\ntest-mode=1\n") << false << -1;
    QTest::newRow("unknown name") << QByteArray("test=1\n") << false << -1;
    QTest::newRow("section") << QByteArray("[pba]\ntest-mode=1\n") << false << -1;
    QTest::newRow("no value") << QByteArray("test-mode\n") << false << -1;
    QTest::newRow("rubbish") << Bytes("\0\xFF=\0[", 5) << false << -1;
}

void FilesTest::Arguments()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, valid);
    fake_pbe::WriteFile(kArgumentsPath, content);
    boost::program_options::variables_map arguments;
    QCOMPARE(fde::boot::ReadPbaArguments(kArgumentsPath, arguments),
             valid ? kro::kOk : kro::kInvalidArgument);
    QCOMPARE(fake_pbe::Messages().size(), valid ? 0u : 7u);
    if (valid) {
        const auto &value = arguments[fde::boot::kTestModeOption];
        QTEST(value.empty() ? -1 : int(value.as<bool>()), "testMode");
    }
}

void FilesTest::InvalidArguments()
{
    fake_pbe::WriteFile(kArgumentsPath, "other=1\n");
    boost::program_options::variables_map arguments;
    QCOMPARE(fde::boot::ReadPbaArguments(kArgumentsPath, arguments), kro::kInvalidArgument);
    const QString block = u"\r\n"_qs + QString(76, u'#') + u"\r\n\r\n"_qs;
    const QString error = ErrorLine(u"fde::boot::ReadPbaArguments"_qs, u"0x80000046"_qs,
                                    u"Invalid PBA config file. Error: unrecognised option 'other'"_qs);
    QCOMPARE(LogWithoutLineNumbers(), block + error + block);
    for (const fake_pbe::Message &message : fake_pbe::Messages())
        QCOMPARE(message.severity, 300u);
}

void FilesTest::LastDomain()
{
    const Settings settings;
    QVERIFY(!settings.IsLastDomainSaved());
    QCOMPARE(settings.ReadLastDomain(), QString());
    settings.WriteLastDomain(u"Büro"_qs);
    QVERIFY(settings.IsLastDomainSaved());
    QCOMPARE(settings.ReadLastDomain(), u"Büro"_qs);
    QVERIFY(
        fake_pbe::LogText().endsWith("ReadTextFromFile(\"\\pba\\last_dmn.txt\")\r\nLast domain: B*ro\r\n"));
    settings.WriteLastDomain(QString());
    QVERIFY(settings.IsLastDomainSaved());
    QCOMPARE(fake_pbe::ReadFile(kLastDomainPath), QByteArray());
}

void FilesTest::LastUser()
{
    const Settings settings;
    settings.WriteLastUser(u"anna"_qs);
    QCOMPARE(settings.ReadLastUser(), QString());
    QCOMPARE(fake_pbe::LogText(), QByteArray("Save last user name == false\r\n"));
    fake_pbe::WriteFile(kLastUserPath, QByteArray());
    QCOMPARE(settings.ReadLastUser(), QString());
    settings.WriteLastUser(u" an\nna\r\n "_qs);
    QCOMPARE(settings.ReadLastUser(), u" an\nna\r\n "_qs);
    QVERIFY(fake_pbe::LogText().endsWith("Save last user name == true\r\n"
                                         "ReadTextFromFile(\"\\pba\\last_usr.txt\")\r\n"));
}

void FilesTest::NothingWaitsForAFifo()
{
    for (const char16_t *path : {kArgumentsPath, kLastUserPath, kLastDomainPath})
        fake_pbe::MakeFifo(path);
    const Settings settings;
    boost::program_options::variables_map arguments;
    QCOMPARE(fde::boot::ReadPbaArguments(kArgumentsPath, arguments), kro::kOk);
    QVERIFY(arguments.empty());
    settings.WriteLastUser(u"anna"_qs);
    settings.WriteLastDomain(u"domain"_qs);
    QVERIFY(settings.IsLastDomainSaved());
    QCOMPARE(settings.ReadLastUser() + settings.ReadLastDomain(), QString());
}

PBA_REGISTER_TEST(FilesTest);

#include "tst_files.moc"
