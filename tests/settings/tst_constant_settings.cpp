// SPDX-License-Identifier: Apache-2.0
// settings.bin: decoding, damaged and hostile files, checks, and the defaults that take its place.
#include <sys/stat.h>

#include "bench/allocation_counter.h"
#include "tests/support/fake_pbe.h"
#include "module/settings/input_locale_checks.h"
#include "module/settings/paths.h"
#include "module/settings/pba_file.h"
#include "module/settings/settings.h"
#include "tests/support/test_main.h"

using namespace pba;

namespace {

// Little-endian, as the machine that the tests run on.
template <typename T>
QByteArray Number(T value)
{
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

const auto U16 = Number<quint16>;
const auto U32 = Number<quint32>;

QByteArray Text(QStringView text)
{
    return U32(quint32(text.size())) +
           QByteArray(reinterpret_cast<const char *>(text.utf16()), 2 * text.size());
}

const QByteArray kVersion = U16(1);
const QByteArray kHotkeys = U16(1) + U16(0x10) + U16(2) + U16(0x10) + U16(0) + U16(0x14);
const QByteArray kHead = kVersion + Text(u"Büro"_qs);
const QByteArray kRussian = U16(1049) + Text(u"Русский"_qs) + U32(2) + U32(0x419) + Text(u"RU"_qs) + U16(2) +
                            U16(0x32) + U32(0xF0010419) + Text(QString()) + U16(0) + U16(0);
const QByteArray kValid = kHead + U32(1) + kRussian + kHotkeys;

const InputLanguage kRussianLanguage{1049, u"Русский", {{0x419, u"RU", {2, 0x32}}, {0xF0010419, u"", {}}}};
const ConstantSettingsRecord kValidRecord{u"Büro", {{kRussianLanguage}, {1, 0x10}, {2, 0x10}, {0, 0x14}}};

const InputLanguage kEnglishLanguage{1033, u"English", {{0x409, u"US", {0x0002, 0x0031}}}};
const ConstantSettingsRecord kDefaultRecord{u"Host name",
                                            {{kEnglishLanguage}, {1, 0x10}, {2, 0x10}, {0, 0x14}}};

const char kNoLanguages[] = "PrebootSettings: no input languages. PBA expects at least one input language.";
const char kBroken[] = "error, message: Cannot deserialize file \"\\pba\\settings.bin\".\r\n";

kro::result_t Decode(const QByteArray &bytes, ConstantSettingsRecord *record)
{
    SettingsStream stream{{bytes.begin(), bytes.end()}, 0};
    return DecodeSettings(&stream, record);
}

} // namespace

class ConstantSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { fake_pbe::Reset(); }

    void Decodes()
    {
        for (const QByteArray &behind : {QByteArray(), QByteArray("extra")}) {
            ConstantSettingsRecord record = kDefaultRecord;
            QCOMPARE(Decode(kValid + behind, &record), kro::kOk);
            QVERIFY(record == kValidRecord);
        }
        // Nothing but what the encoding demands, so often that a bound one byte too strict would refuse it.
        const QByteArray layout = U32(1) + U32(0) + U16(0) + U16(0);
        const QByteArray last = U16(1) + U32(0) + U32(100) + layout.repeated(100);
        const QByteArray languages = (U16(1) + U32(0) + U32(0)).repeated(100);
        ConstantSettingsRecord record;
        QCOMPARE(Decode(kHead + U32(1) + last + kHotkeys, &record), kro::kOk);
        QCOMPARE(Decode(kHead + U32(100) + languages + kHotkeys, &record), kro::kOk);
        QCOMPARE(record.prebootSettings.inputLanguages.size(), 100u);
    }

    void RefusesEveryTruncation()
    {
        for (int length = 0; length < kValid.size(); ++length) {
            ConstantSettingsRecord record;
            QCOMPARE(Decode(kValid.first(length), &record), kro::kBufferTooSmall);
        }
    }

    void HostileCounts()
    {
        const QByteArray language = U16(1033) + Text(u"x"_qs);
        const QByteArray filler(4096, '\0');
        // The last: the most that a file can ask for, each count as large as the bytes behind it allow.
        QList<QByteArray> files{kVersion + U32(3) + "abcd", kHead + U32(3) + QByteArray(29, '\0'),
                                kHead + U32(100) + (language + U32(40)).repeated(100),
                                kVersion + U32(0) + U32(10000) + U16(1) + U32(0) + U32(5000) +
                                    QByteArray(99990, '\0')};
        for (const quint32 count : {0xFFFFFFFFu, 0x80000000u, 0x15555556u, 4000u}) {
            files << kVersion + U32(count) + filler << kHead + U32(count) + filler
                  << kHead + U32(1) + language + U32(count) + filler
                  << kHead + U32(1) + language + U32(1) + U32(0x409) + U32(count) + filler;
        }
        for (const QByteArray &bytes : files) {
            ConstantSettingsRecord record;
            allocation_counter::Start();
            const kro::result_t result = Decode(bytes, &record);
            const allocation_counter::Totals totals = allocation_counter::Stop();
            QCOMPARE(result, kro::kBufferTooSmall);
            QVERIFY2(totals.bytes <= 16u * std::size_t(bytes.size()), bytes.left(99).toHex().constData());
        }
    }

    // The defaults take its place, and the log tells why.
    void UnusableFile()
    {
        const char pipe[] = "|";
        const struct
        {
            QByteArray bytes;
            kro::result_t code;
            QByteArray error;
        } rows[] = {
            {"", kro::kNotFound, ""},
            {pipe, kro::kAccessDenied, "File \"\\pba\\settings.bin\" cannot be opened for reading.\r\n"},
            {U16(2) + kValid.mid(2), kro::kInvalidVersion, kBroken},
            {kValid.first(kHead.size() + 40), kro::kBufferTooSmall, kBroken},
            {kHead + U32(0) + kHotkeys, kro::kOk, kNoLanguages}};
        for (const auto &row : rows) {
            fake_pbe::Reset();
            if (row.bytes == pipe)
                QCOMPARE(mkfifo(qPrintable(fake_pbe::FileName(kSettingsPath)), 0600), 0);
            else if (!row.bytes.isEmpty())
                fake_pbe::WriteFile(kSettingsPath, row.bytes);
            QCOMPARE(Settings().ReadConstantSettingsFromFile(kSettingsPath), row.code);
            Settings settings;
            QVERIFY(settings.GetHostName() == kDefaultRecord.hostName);
            QVERIFY(settings.GetPrebootSettings() == kDefaultRecord.prebootSettings);
            QVERIFY(fake_pbe::LogText().contains(row.error));
            QCOMPARE(fake_pbe::LogText().contains("error, message"), !row.error.isEmpty());
        }
    }

    void LoadsOnceAndNothingHuge()
    {
        fake_pbe::WriteFile(kSettingsPath, kValid);
        Settings settings;
        QVERIFY(settings.GetHostName() == kValidRecord.hostName);
        QVERIFY(QFile::resize(fake_pbe::FileName(kSettingsPath), kMaxPbaFileSize));
        QCOMPARE(Settings().ReadConstantSettingsFromFile(kSettingsPath), kro::kOk);
        QVERIFY(QFile::resize(fake_pbe::FileName(kSettingsPath), kMaxPbaFileSize + 1));
        QCOMPARE(Settings().ReadConstantSettingsFromFile(kSettingsPath), kro::kAccessDenied);
        QVERIFY(settings.GetPrebootSettings() == kValidRecord.prebootSettings);
        QCOMPARE(fake_pbe::LogText().count("LoadConstantSettingsIfNeeded\tEND: 0x00000000"), 2);
    }

    // One fault after the other is repaired: the hot keys come first, then the languages.
    void InputLocales()
    {
        const Hotkey bad{0x0003, 0x0010}, language{1, 0x10}, layout{2, 0x10}, capsLock{0, 0x14};
        const InputLanguage none{1049, u"Рус", {}}, some{1049, u"Рус", {{0x419, u"RU", {0xF, 0}}}},
            wrong{1033, u"English", {{0x409, u"UŠ", bad}}},
            right{1033, u"English", {{0x409, u"UŠ", {0x11, 0xA0}}}};
        const std::pair<PrebootSettings, const char *> rows[] = {
            {{{}, bad, bad, bad}, "languageSwitchHotkey is invalid"},
            {{{}, language, bad, bad}, "keyboardLayoutSwitchHotkey is invalid"},
            {{{}, language, layout, bad}, "capsLockTurnOffHotkey is invalid"},
            {{{}, language, layout, capsLock}, kNoLanguages},
            {{{none, wrong}, language, layout, capsLock},
             "PrebootSettings: no keyboard layouts for ***(1049)."},
            {{{some, wrong}, language, layout, capsLock},
             "Layout select hot key is invalid. Language: English(1033). Layout: U*(1033)."},
            {{{some, right}, language, layout, capsLock}, nullptr}};
        for (const auto &[settings, message] : rows) {
            fake_pbe::Reset();
            QCOMPARE(fde::boot::CheckInputLocales(settings), message ? kro::kInvalidArgument : kro::kOk);
            QVERIFY2(!message ||
                         fake_pbe::LogText().contains(QByteArray("0x80000046 error, message: ") + message),
                     message);
        }
    }
};

PBA_REGISTER_TEST(ConstantSettingsTest);

#include "tst_constant_settings.moc"
