// What a volume is built from: text, secrets, and the look-up of a mapping.
#include <sys/stat.h>

#include <QDir>

#include "scratch_volume.h"
#include "test_main.h"
#include "volume/mapping.h"
#include "volume/text.h"

class VolumePartsTest : public QObject
{
    Q_OBJECT

private slots:
    void utf16ToUtf8_data()
    {
        QTest::addColumn<std::u16string>("wide");
        QTest::addColumn<std::string>("narrow");
        QTest::newRow("empty") << std::u16string() << std::string();
        QTest::newRow("one to three bytes")
            << std::u16string(u"a\u00e9\u0434\u20ac") << std::string("a\u00e9\u0434\u20ac");
        QTest::newRow("a pair") << std::u16string(u"\U0001F600") << std::string("\xf0\x9f\x98\x80");
        QTest::newRow("a zero inside") << std::u16string(u"a\0b", 3) << std::string("a\0b", 3);
        QTest::newRow("high alone") << std::u16string{u'x', 0xD83D, u'y'} << std::string("x\xef\xbf\xbdy");
        QTest::newRow("high at the end") << std::u16string{0xD83D} << std::string("\xef\xbf\xbd");
        QTest::newRow("low alone") << std::u16string{0xDE00} << std::string("\xef\xbf\xbd");
    }
    void utf16ToUtf8()
    {
        QFETCH(std::u16string, wide);
        QFETCH(std::string, narrow);
        QCOMPARE(volume::ToUtf8(wide), narrow);
        QVERIFY(volume::ToSecretUtf8(wide).View() == narrow);
    }

    void utf8IsChecked_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::addColumn<int>("units"); // -1: refused
        QTest::newRow("mixed") << std::string("a\u00e9\u20ac\xf0\x9f\x98\x80") << 5;
        QTest::newRow("cut off") << std::string("\xe2\x82") << -1;
        QTest::newRow("overlong") << std::string("\xc0\x80") << -1;
        QTest::newRow("overlong, three") << std::string("\xe0\x80\x80") << -1;
        QTest::newRow("a surrogate") << std::string("\xed\xa0\x80") << -1;
        QTest::newRow("beyond") << std::string("\xf4\x90\x80\x80") << -1;
        QTest::newRow("a tail alone") << std::string("\x80") << -1;
        QTest::newRow("no tail") << std::string("\xc3(") << -1;
    }
    void utf8IsChecked()
    {
        QFETCH(std::string, text);
        QFETCH(int, units);
        QCOMPARE(volume::Utf16Length(text).has_value() ? int(*volume::Utf16Length(text)) : -1, units);
        if (units >= 0)
            QCOMPARE(volume::ToUtf8(volume::ToUtf16(text)), text);
    }

    void aSecretMovesAndDoesNotGrow()
    {
        volume::Secret first(2);
        QVERIFY(first.Append('a') && first.Append('b') && !first.Append('c'));
        const char *bytes = first.Data();
        volume::Secret second(std::move(first));
        QCOMPARE(static_cast<const void *>(second.Data()), static_cast<const void *>(bytes));
        QVERIFY(first.IsEmpty() && first.Data() != bytes);
        second = volume::Secret();
        QVERIFY(second.IsEmpty() && second.Capacity() == 0);
    }

    void aMappingIsLookedUp_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("uuid");
        QTest::addColumn<QByteArray>("backingFile");
        QTest::addColumn<bool>("second");
        QTest::addColumn<bool>("ours");
        const QByteArray uuid = "CRYPT-LUKS2-0123abcd-root";
        QTest::newRow("ours") << QByteArray("root") << uuid << QByteArray("volume.img") << false << true;
        QTest::newRow("another name")
            << QByteArray("data") << uuid << QByteArray("volume.img") << false << false;
        QTest::newRow("another volume") << QByteArray("root") << QByteArray("CRYPT-LUKS2-0123abce-root")
                                        << QByteArray("volume.img") << false << false;
        QTest::newRow("a longer identifier")
            << QByteArray("root") << QByteArray("CRYPT-LUKS2-0123abcdef-root") << QByteArray("volume.img")
            << false << false;
        QTest::newRow("no encryption") << QByteArray("root") << QByteArray("LVM-0123abcd-root")
                                       << QByteArray("volume.img") << false << false;
        QTest::newRow("a copy of the file")
            << QByteArray("root") << uuid << QByteArray("copy.img") << false << false;
        QTest::newRow("over two devices")
            << QByteArray("root") << uuid << QByteArray("volume.img") << true << false;
    }
    void aMappingIsLookedUp()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, uuid);
        QFETCH(QByteArray, backingFile);
        QFETCH(bool, second);
        QFETCH(bool, ours);
        QTemporaryDir root;
        const auto write = [&](const QString &path, const QByteArray &line) {
            QVERIFY(QDir().mkpath(QFileInfo(root.filePath(path)).path()));
            QFile file(root.filePath(path));
            QVERIFY(file.open(QFile::WriteOnly) && file.write(line + '\n') > 0);
        };
        write("volume.img", "v");
        write("copy.img", "v");
        write("sys/block/sda/dev", "8:0");
        write("sys/block/dm-3/dm/name", name);
        write("sys/block/dm-3/dm/uuid", uuid);
        write("sys/block/dm-3/slaves/loop0/dev", "7:0");
        write("sys/block/dm-3/slaves/loop0/loop/backing_file", root.filePath(backingFile).toUtf8());
        if (second)
            write("sys/block/dm-3/slaves/sda/dev", "8:0");
        QCOMPARE(volume::IsMappedOver(root.filePath("sys").toStdString(), "root", "0123-abcd",
                                      root.filePath("volume.img").toStdString()),
                 ours);
    }
};

PBA_REGISTER_TEST(VolumePartsTest);

#include "tst_parts.moc"
