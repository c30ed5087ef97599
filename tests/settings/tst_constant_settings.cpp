// settings.bin: decoding, damaged and hostile files, and the defaults that take their place.
#include <fcntl.h>
#include <unistd.h>

#include <QtEndian>

#include "allocation_counter.h"
#include "log_lines.h"
#include "settings/paths.h"
#include "settings/pba_file.h"
#include "settings/settings.h"
#include "test_main.h"

using namespace pba;

namespace {

template <typename T>
QByteArray Number(T value)
{
    const T little = qToLittleEndian(value);
    return QByteArray(reinterpret_cast<const char *>(&little), sizeof(little));
}

QByteArray U16(quint16 value)
{
    return Number(value);
}

QByteArray U32(quint32 value)
{
    return Number(value);
}

QByteArray Text(const QString &text)
{
    QByteArray bytes = U32(quint32(text.size()));
    for (const QChar unit : text)
        bytes += U16(unit.unicode());
    return bytes;
}

const QByteArray kVersion = U16(1);
const QByteArray kHotkeys = U16(1) + U16(0x10) + U16(2) + U16(0x10) + U16(0) + U16(0x14);
const QByteArray kHead = kVersion + Text(u"Büro"_qs);
const QByteArray kRussian = U16(1049) + Text(u"Русский"_qs) + U32(2) + U32(0x419) + Text(u"RU"_qs) + U16(2) +
                            U16(0x32) + U32(0xF0010419) + Text(QString()) + U16(0) + U16(0);
const QByteArray kValid = kHead + U32(1) + kRussian + kHotkeys;

const ConstantSettingsRecord kValidRecord{
    u"Büro",
    {{{1049, u"Русский", {{0x419, u"RU", {2, 0x32}}, {0xF0010419, u"", {0, 0}}}}},
     {1, 0x10},
     {2, 0x10},
     {0, 0x14}}};

const ConstantSettingsRecord kDefaultRecord{
    u"Host name",
    {{{1033, u"English", {{0x409, u"US", {0x0002, 0x0031}}}}}, {1, 0x10}, {2, 0x10}, {0, 0x14}}};

kro::result_t Decode(const QByteArray &bytes, ConstantSettingsRecord *record)
{
    SettingsStream stream{{bytes.begin(), bytes.end()}, 0};
    return DecodeSettings(&stream, record);
}

QString ErrorLine(const char *code, const QString &message)
{
    return u"orvane pba::Settings::ReadConstantSettingsFromFile(#) returned %1 error, message: %2\r\n"_qs.arg(
        QString::fromLatin1(code), message);
}

const QString kQuotedPath = u"\"\\pba\\settings.bin\""_qs;

} // namespace

class ConstantSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { fake_pbe::Reset(); }
    void DecodesEverything();
    void DecodesSmallestElements();
    void RefusesEveryTruncation();
    void HostileCounts_data();
    void HostileCounts();
    void MemoryIsBounded();
    void UnusableFile_data();
    void UnusableFile();
    void FailedRead();
    void TooLarge();
    void LoadsOnce();
};

void ConstantSettingsTest::DecodesEverything()
{
    for (const QByteArray &behind : {QByteArray(), QByteArray("extra")}) {
        ConstantSettingsRecord record = kDefaultRecord;
        QCOMPARE(Decode(kValid + behind, &record), kro::kOk);
        QVERIFY(record == kValidRecord);
    }
}

// Nothing but what the encoding demands, so often that a bound one byte too strict would refuse it.
void ConstantSettingsTest::DecodesSmallestElements()
{
    const QByteArray language = U16(1) + U32(0) + U32(0);
    const QByteArray layout = U32(1) + U32(0) + U16(0) + U16(0);
    const QByteArray last = U16(1) + U32(0) + U32(100) + layout.repeated(100);
    ConstantSettingsRecord record;
    QCOMPARE(Decode(kHead + U32(1) + last + kHotkeys, &record), kro::kOk);
    QCOMPARE(Decode(kHead + U32(100) + language.repeated(100) + kHotkeys, &record), kro::kOk);
    QCOMPARE(record.prebootSettings.inputLanguages.size(), 100u);
}

void ConstantSettingsTest::RefusesEveryTruncation()
{
    for (int length = 0; length < kValid.size(); ++length) {
        ConstantSettingsRecord record;
        QCOMPARE(Decode(kValid.first(length), &record), kro::kBufferTooSmall);
    }
}

void ConstantSettingsTest::HostileCounts_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray language = U16(1033) + Text(u"x"_qs);
    const QByteArray filler(4096, '\0');
    for (const quint32 count : {0xFFFFFFFFu, 0x80000000u, 0x15555556u, 4000u}) {
        QTest::addRow("host name of %u", count) << kVersion + U32(count) + filler;
        QTest::addRow("%u languages", count) << kHead + U32(count) + filler;
        QTest::addRow("%u layouts", count) << kHead + U32(1) + language + U32(count) + filler;
        QTest::addRow("layout name of %u", count)
            << kHead + U32(1) + language + U32(1) + U32(0x409) + U32(count) + filler;
    }
    QTest::newRow("string one unit longer than the file") << kVersion + U32(3) + "abcd";
    QTest::newRow("languages one too many") << kHead + U32(3) + QByteArray(29, '\0');
    QTest::newRow("nested counts") << kHead + U32(100) + (language + U32(40)).repeated(100);
}

void ConstantSettingsTest::HostileCounts()
{
    QFETCH(QByteArray, bytes);
    ConstantSettingsRecord record;
    allocation_counter::Start();
    const kro::result_t result = Decode(bytes, &record);
    const allocation_counter::Totals totals = allocation_counter::Stop();
    QCOMPARE(result, kro::kBufferTooSmall);
    QVERIFY2(totals.bytes <= 16u * std::size_t(bytes.size()), qPrintable(QString::number(totals.bytes)));
}

// The most that a file can ask for: each count as large as the bytes behind it allow.
void ConstantSettingsTest::MemoryIsBounded()
{
    const quint32 languages = 100000;
    const QByteArray bytes = kVersion + U32(0) + U32(languages) + U16(1) + U32(0) + U32(languages / 2) +
                             QByteArray(10 * (languages - 1), '\0');
    ConstantSettingsRecord record;
    allocation_counter::Start();
    const kro::result_t result = Decode(bytes, &record);
    QVERIFY(allocation_counter::Stop().bytes <= 16u * std::size_t(bytes.size()));
    QCOMPARE(result, kro::kBufferTooSmall);
}

void ConstantSettingsTest::UnusableFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QString>("errors");
    QTest::newRow("missing") << QByteArray() << QByteArray("0x8000004C") << QString();
    const auto row = [](const char *name, const QByteArray &bytes, const char *code) {
        const QString error = ErrorLine(code, u"Cannot deserialize file "_qs + kQuotedPath + u"."_qs);
        QTest::newRow(name) << bytes << QByteArray(code) << error;
    };
    row("version 2", U16(2) + kValid.mid(2), "0x8000005B");
    row("cut inside a layout name", kValid.first(kHead.size() + 40), "0x80000044");
    QTest::newRow("fifo") << QByteArray("|") << QByteArray("0x80000045")
                          << ErrorLine("0x80000045",
                                       u"File "_qs + kQuotedPath + u" cannot be opened for reading."_qs);
    QTest::newRow("no languages")
        << kHead + U32(0) + kHotkeys << QByteArray("0x00000000")
        << u"orvane fde::boot::CheckInputLocales(#) returned 0x80000046 error, message: PrebootSettings: no "
           u"input languages. PBA expects at least one input language.\r\n"
           u"orvane pba::Settings::LoadConstantSettingsIfNeeded(#) returned 0x80000046 error, message: "
           u"CheckInputLocales failed\r\n"_qs;
}

void ConstantSettingsTest::UnusableFile()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, code);
    QFETCH(QString, errors);
    if (bytes == "|")
        fake_pbe::MakeFifo(kSettingsPath);
    else if (!bytes.isEmpty())
        fake_pbe::WriteFile(kSettingsPath, bytes);
    Settings settings;
    settings.LoadConstantSettingsIfNeeded();
    const QString end = u"orvane pba::Settings::ReadConstantSettingsFromFile\tEND: "_qs +
                        QString::fromLatin1(code) + u"\r\n"_qs;
    const bool checked = code == "0x00000000";
    QCOMPARE(LogWithoutLineNumbers(),
             u"orvane pba::Settings::LoadConstantSettingsIfNeeded\tBEGIN\r\n"
             u"orvane pba::Settings::ReadConstantSettingsFromFile\tBEGIN\r\n"
             u"ReadFromFileInternal(\"\\pba\\settings.bin\")\r\n"_qs +
                 (checked ? end + errors : errors + end) +
                 u"orvane pba::Settings::LoadDefaultConstantSettings\tBEGIN\r\n"
                 u"orvane pba::Settings::LoadDefaultConstantSettings\tEND: 0x00000000\r\n"
                 u"orvane pba::Settings::LoadConstantSettingsIfNeeded\tEND: "
                 u"0x00000000\r\n"_qs);
    QVERIFY(settings.GetHostName() == kDefaultRecord.hostName);
    QVERIFY(settings.GetPrebootSettings() == kDefaultRecord.prebootSettings);
}

// The descriptor that the platform hands out cannot be read, or ends before the size that it tells.
void ConstantSettingsTest::FailedRead()
{
    fake_pbe::WriteFile(kSettingsPath, kValid);
    const QByteArray name = fake_pbe::FileName(kSettingsPath).toLocal8Bit();
    fake_pbe::SetNextDescriptor(open(name, O_WRONLY | O_CLOEXEC));
    QCOMPARE(Settings().ReadConstantSettingsFromFile(kSettingsPath), kro::kAccessDenied);
    const int descriptor = open(name, O_RDONLY | O_CLOEXEC);
    QCOMPARE(lseek(descriptor, 10, SEEK_SET), off_t(10));
    fake_pbe::SetNextDescriptor(descriptor);
    QCOMPARE(Settings().ReadConstantSettingsFromFile(kSettingsPath), kro::kUnexpected);
    const QString shortRead = u"Unexpected reading of file %1. Read size: %2. Original size: %3"_qs.arg(
        kQuotedPath, QString::number(kValid.size() - 10), QString::number(kValid.size()));
    const QString log = LogWithoutLineNumbers();
    const QString unreadable = u"Cannot read file "_qs + kQuotedPath + u"."_qs;
    QVERIFY2(log.contains(ErrorLine("0x80000045", unreadable)), qPrintable(log));
    QVERIFY2(log.contains(ErrorLine("0x80000040", shortRead)), qPrintable(log));
}

void ConstantSettingsTest::TooLarge()
{
    fake_pbe::WriteFile(kSettingsPath, kValid);
    QVERIFY(QFile::resize(fake_pbe::FileName(kSettingsPath), kMaxPbaFileSize));
    QCOMPARE(Settings().ReadConstantSettingsFromFile(kSettingsPath), kro::kOk);
    QVERIFY(QFile::resize(fake_pbe::FileName(kSettingsPath), kMaxPbaFileSize + 1));
    QCOMPARE(Settings().ReadConstantSettingsFromFile(kSettingsPath), kro::kAccessDenied);
}

void ConstantSettingsTest::LoadsOnce()
{
    fake_pbe::WriteFile(kSettingsPath, kValid);
    Settings settings;
    QVERIFY(settings.GetHostName() == kValidRecord.hostName);
    fake_pbe::WriteFile(kSettingsPath, "other");
    QVERIFY(settings.GetPrebootSettings() == kValidRecord.prebootSettings);
    QCOMPARE(fake_pbe::LogText().count("ReadFromFileInternal"), 1);
    QCOMPARE(fake_pbe::LogText().count("LoadConstantSettingsIfNeeded\tEND: 0x00000000"), 2);
}

PBA_REGISTER_TEST(ConstantSettingsTest);

#include "tst_constant_settings.moc"
