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
        const QPair<QByteArray, QString> written[] = {
            {QByteArray(), u""_qs},
            {QByteArray("\xFF\xFE\0 \x2F\x04\x3D\xD8\x11\xDD", 10), u"\u2000Я\U0001F511"_qs},
            {QByteArray("\xFF\xFE\r\0\r\0\n\0b\0", 10), u"\r\nb"_qs},
            {QByteArray("\xFF\xFE\r\n\xFF\xFE", 6), u"\u0A0D\uFEFF"_qs}};
        const QPair<QByteArray, QString> foreign[] = {
            {QByteArray("\xFE\xFF\0a\x04\x2F\0\r\0\n", 10), u"aЯ\n"_qs},
            {QByteArray("\n\0\x2F\x04\0", 5), u"\nЯ"_qs},
            {QByteArray("\xFF\xFE", 2), u""_qs}};
        const QString path = QString::fromUtf16(kLastDomainPath);
        QFile file(fake_pbe::FileName(kLastDomainPath));
        QString read = u"before"_qs;
        for (const auto &[bytes, text] : written) {
            fake_pbe::WriteFile(kLastDomainPath, QByteArray(99, 'x'));
            QVERIFY(WriteTextToFile(path, text) && file.open(QIODevice::ReadOnly));
            QCOMPARE(file.readAll(), bytes);
            file.close();
            QVERIFY(ReadTextFromFile(path, &read));
            QCOMPARE(read, text);
        }
        for (const auto &[bytes, text] : foreign) {
            fake_pbe::WriteFile(kLastDomainPath, bytes);
            QVERIFY(ReadTextFromFile(path, &read));
            QCOMPARE(read, text);
        }
    }

    void TextFailures()
    {
        QString text = u"kept"_qs;
        QVERIFY(!ReadTextFromFile(u"\\é"_qs, &text));
        QVERIFY(!ReadTextFromFile(u"\\pba"_qs, &text));
        QVERIFY(!WriteTextToFile(u"\\no\\a"_qs, text));
        QCOMPARE(text, u"kept"_qs);
        const QByteArray log =
            "ReadTextFromFile(\"\\*\")\r\n" +
            ErrorLine("ReadTextFromFile", "0x8000004C", "File \"\\*\" does not exist.") +
            "ReadTextFromFile(\"\\pba\")\r\n" +
            ErrorLine("ReadTextFromFile", "0x80000045", "File \"\\pba\" cannot be opened for reading.") +
            "WriteTextToFile(\"\\no\\a\")\r\n" +
            ErrorLine("WriteTextToFile", "0x80000045", "File \"\\no\\a\" cannot be opened for writing.");
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
            {"# test-mode=true\n", -1, nullptr},
            {"#\n\ntest-mode=1", 1, nullptr},
            {" test-mode = OFF # now\r\n", 0, nullptr},
            {"other=1\n", -1, "unrecognised option 'other'"},
            {"test-mode=1\ntest-mode=1\n", -1, "option 'test-mode' cannot be specified more than once"}};
        const QByteArray block = "\r\n" + QByteArray(76, '#') + "\r\n\r\n";
        for (const auto &row : rows) {
            fake_pbe::Reset();
            fake_pbe::WriteFile(kArgumentsPath, row.content);
            boost::program_options::variables_map arguments;
            QCOMPARE(fde::boot::ReadPbaArguments(kArgumentsPath, arguments),
                     row.error ? kro::kInvalidArgument : kro::kOk);
            const auto &value = arguments[fde::boot::kTestModeOption];
            // A file that is refused may have left something behind.
            if (!row.error)
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
        settings.WriteLastDomain(u"Büro"_qs);
        QVERIFY(settings.IsLastDomainSaved());
        QCOMPARE(settings.ReadLastDomain(), u"Büro"_qs);
        settings.WriteLastUser(u"anna"_qs);
        QCOMPARE(settings.ReadLastUser(), QString());
        QVERIFY(fake_pbe::LogText().endsWith("Last domain: B*ro\r\nSave last user name == false\r\n"));
        fake_pbe::WriteFile(kLastUserPath, QByteArray());
        settings.WriteLastUser(u" an\nna\r\n "_qs);
        QCOMPARE(settings.ReadLastUser(), u" an\nna\r\n "_qs);
        QVERIFY(fake_pbe::LogText().contains("Save last user name == true\r\n"));
    }
};

PBA_REGISTER_TEST(FilesTest);

#include "tst_files.moc"
