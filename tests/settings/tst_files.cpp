// Text files, the arguments file, and the memory of the last user and domain.
#include <boost/program_options/variables_map.hpp>

#include "log_lines.h"
#include "settings/arguments_file.h"
#include "settings/paths.h"
#include "settings/settings.h"
#include "settings/text_file.h"
#include "test_main.h"

using namespace pba;

class FilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { fake_pbe::Reset(); }

    void Text()
    {
        const struct
        {
            QByteArray bytes;
            QString text;
            bool written;
        } rows[] = {
            {QByteArray(), u""_qs, true},
            {QByteArray("\xFF\xFE \0a\0\x2F\x04", 8), u" aЯ"_qs, true},
            {QByteArray("\xFF\xFE\x3D\xD8\x11\xDD", 6), u"\U0001F511"_qs, true},
            {QByteArray("\xFF\xFE\r\0\r\0\n\0b\0", 10), u"\r\nb"_qs, true},
            {QByteArray("\xFF\xFE\r\n\xFF\xFE", 6), u"\u0A0D\uFEFF"_qs, true},
            {QByteArray("\xFE\xFF\0a\x04\x2F\0\r\0\n", 10), u"aЯ\n"_qs, false},
            {QByteArray("\n\0\x2F\x04\0", 5), u"\nЯ"_qs, false},
            {QByteArray("\xFF\xFE", 2), u""_qs, false},
        };
        const QString path = QString::fromUtf16(kLastDomainPath);
        for (const auto &row : rows) {
            fake_pbe::WriteFile(kLastDomainPath, row.written ? QByteArray(99, 'x') : row.bytes);
            if (row.written) {
                QVERIFY(WriteTextToFile(path, row.text));
                QFile file(fake_pbe::FileName(kLastDomainPath));
                QVERIFY(file.open(QIODevice::ReadOnly));
                QCOMPARE(file.readAll(), row.bytes);
            }
            QString read = u"before"_qs;
            QVERIFY(ReadTextFromFile(path, &read));
            QCOMPARE(read, row.text);
        }
    }

    void TextFailures()
    {
        QString text = u"kept"_qs;
        QVERIFY(!ReadTextFromFile(u"\\pba\\é.txt"_qs, &text));
        QVERIFY(!ReadTextFromFile(u"\\pba\\help"_qs, &text));
        QVERIFY(!WriteTextToFile(u"\\pba\\none\\a.txt"_qs, text));
        QCOMPARE(text, u"kept"_qs);
        const QByteArray log =
            "ReadTextFromFile(\"\\pba\\*.txt\")\r\n" +
            ErrorLine("ReadTextFromFile", "0x8000004C", "File \"\\pba\\*.txt\" does not exist.") +
            "ReadTextFromFile(\"\\pba\\help\")\r\n" +
            ErrorLine("ReadTextFromFile", "0x80000045",
                      "File \"\\pba\\help\" cannot be opened for reading.") +
            "WriteTextToFile(\"\\pba\\none\\a.txt\")\r\n" +
            ErrorLine("WriteTextToFile", "0x80000045",
                      "File \"\\pba\\none\\a.txt\" cannot be opened for writing.");
        QCOMPARE(LogWithoutLineNumbers(), log);
    }

    void Arguments()
    {
        const struct
        {
            const char *content;
            int testMode; // -1: not given
            const char *error;
        } rows[] = {
            {"", -1, nullptr},
            {"# test-mode=true\n", -1, nullptr},
            {"#\n\ntest-mode=1", 1, nullptr},
            {" test-mode = OFF # now\r\n", 0, nullptr},
            {"other=1\n", -1, "unrecognised option 'other'"},
            {"test-mode=maybe\n", -1,
             "the argument ('maybe') for option 'test-mode' is invalid. "
             "Valid choices are 'on|off', 'yes|no', '1|0' and 'true|false'"},
        };
        const QByteArray block = "\r\n" + QByteArray(76, '#') + "\r\n\r\n";
        for (const auto &row : rows) {
            fake_pbe::Reset();
            fake_pbe::WriteFile(kArgumentsPath, row.content);
            boost::program_options::variables_map arguments;
            QCOMPARE(fde::boot::ReadPbaArguments(kArgumentsPath, arguments),
                     row.error ? kro::kInvalidArgument : kro::kOk);
            const auto &value = arguments[fde::boot::kTestModeOption];
            QCOMPARE(value.empty() ? -1 : int(value.as<bool>()), row.testMode);
            const auto error = QByteArray("Invalid PBA config file. Error: ") + row.error;
            const QByteArray line = ErrorLine("fde::boot::ReadPbaArguments", "0x80000046", error);
            QCOMPARE(LogWithoutLineNumbers(), row.error ? block + line + block : QByteArray());
        }
    }

    void LastUserAndDomain()
    {
        const Settings settings;
        QVERIFY(!settings.IsLastDomainSaved());
        QCOMPARE(settings.ReadLastDomain(), QString());
        settings.WriteLastDomain(u"Büro"_qs);
        QVERIFY(settings.IsLastDomainSaved());
        QCOMPARE(settings.ReadLastDomain(), u"Büro"_qs);
        QVERIFY(fake_pbe::LogText().endsWith(
            "ReadTextFromFile(\"\\pba\\last_dmn.txt\")\r\nLast domain: B*ro\r\n"));
        settings.WriteLastUser(u"anna"_qs);
        QCOMPARE(settings.ReadLastUser(), QString());
        QVERIFY(fake_pbe::LogText().endsWith("Last domain: B*ro\r\nSave last user name == false\r\n"));
        fake_pbe::WriteFile(kLastUserPath, QByteArray());
        settings.WriteLastUser(u" an\nna\r\n "_qs);
        QCOMPARE(settings.ReadLastUser(), u" an\nna\r\n "_qs);
        QVERIFY(fake_pbe::LogText().endsWith("Save last user name == true\r\n"
                                             "ReadTextFromFile(\"\\pba\\last_usr.txt\")\r\n"));
    }
};

PBA_REGISTER_TEST(FilesTest);

#include "tst_files.moc"
