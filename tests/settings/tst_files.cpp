// SPDX-License-Identifier: Apache-2.0
// Text files and the arguments file.
#include <boost/program_options/variables_map.hpp>

#include "tests/support/fake_pbe.h"
#include "module/settings/arguments_file.h"
#include "module/settings/paths.h"
#include "module/settings/text_file.h"
#include "tests/support/test_files.h"
#include "tests/support/test_main.h"

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
        } rows[] = {{QByteArray(), u""_qs, true},
                    {QByteArray("\xFF\xFE\0 \x2F\x04\x3D\xD8\x11\xDD", 10), u"\u2000Я\U0001F511"_qs, true},
                    {QByteArray("\xFF\xFE\r\0\r\0\n\0b\0", 10), u"\r\nb"_qs, true},
                    {QByteArray("\xFF\xFE\r\n\xFF\xFE", 6), u"\u0A0D\uFEFF"_qs, true},
                    {QByteArray("\xFE\xFF\0a\x04\x2F\0\r\0\n", 10), u"aЯ\n"_qs, false},
                    {QByteArray("\n\0\x2F\x04\0", 5), u"\nЯ"_qs, false},
                    {QByteArray("\xFF\xFE", 2), u""_qs, false}};
        const QString path = QString::fromUtf16(kLastDomainPath);
        for (const auto &row : rows) {
            fake_pbe::WriteFile(kLastDomainPath, row.written ? QByteArray(99, 'x') : row.bytes);
            QVERIFY(!row.written || WriteTextToFile(path, row.text));
            QCOMPARE(ReadFile(fake_pbe::FileName(kLastDomainPath)), row.bytes);
            QString read = u"before"_qs;
            QVERIFY(ReadTextFromFile(path, &read));
            QCOMPARE(read, row.text);
        }

        QString text = u"kept"_qs;
        QVERIFY(!ReadTextFromFile(u"\\none"_qs, &text) && !ReadTextFromFile(u"\\pba"_qs, &text));
        QVERIFY(!WriteTextToFile(u"\\no\\a"_qs, text));
        QCOMPARE(text, u"kept"_qs);
    }

    void Arguments()
    {
        const struct
        {
            QByteArray content;
            int testMode; // -1: not given
            const char *error;
        } rows[] = {
            {"# test-mode=true\n", -1, nullptr},
            {"#\n\ntest-mode=1", 1, nullptr},
            {" test-mode = OFF # now\r\n", 0, nullptr},
            {"other=1\n", -1, "unrecognised option 'other'"},
            {"test-mode=1\ntest-mode=1\n", -1, "option 'test-mode' cannot be specified more than once"},
            {QByteArray(4 * 1024 * 1024 + 1, '\n'), -1, "Error: the file is larger than 4 MiB"}};
        for (const auto &row : rows) {
            fake_pbe::Reset();
            fake_pbe::WriteFile(kArgumentsPath, row.content);
            boost::program_options::variables_map arguments;
            QCOMPARE(fde::boot::ReadPbaArguments(kArgumentsPath, arguments),
                     row.error ? kro::kInvalidArgument : kro::kOk);
            const auto &value = arguments[fde::boot::kTestModeOption];
            // A file that is refused may have left something behind.
            if (row.error)
                QVERIFY2(fake_pbe::LogText().contains(row.error), row.error);
            else
                QCOMPARE(value.empty() ? -1 : int(value.as<bool>()), row.testMode);
        }
    }
};

PBA_REGISTER_TEST(FilesTest);

#include "tst_files.moc"
