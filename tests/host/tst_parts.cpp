// What a volume is built from: text, user objects, and the look-up of a mapping.
#include <QDir>
#include <QTemporaryDir>

#include "test_main.h"
#include "volume/mapping.h"
#include "volume/text.h"
#include "volume/user.h"

class VolumePartsTest : public QObject
{
    Q_OBJECT

private slots:
    void textIsEncoded()
    {
        const std::string text = "a\u00e9\u0434\u20ac\U0001F600";
        const std::u16string wide = u"a\u00e9\u0434\u20ac\U0001F600";
        QCOMPARE(volume::ToUtf8(wide), text);
        QVERIFY(volume::ToSecretUtf8(wide).View() == text);
        QCOMPARE(volume::ToUtf16(text), wide);
        QCOMPARE(volume::Utf16Length(text), std::optional(wide.size()));
        QCOMPARE(volume::ToUtf8(std::u16string{u'x', 0xD83D, u'y', 0xDE00, 0xD83D}),
                 "x\uFFFDy\uFFFD\uFFFD"); // halves of pairs
        QVERIFY(volume::ToSecretUtf8({u"a\0b", 3}).View() == std::string_view("a\0b", 3));
        QCOMPARE(volume::Printable("\u00e4\n\x1b[1m\xff\x7f\u0085z"), "\u00e4??[1m???z");
    }

    void whatIsNotUtf8()
    {
        for (const char *text :
             {"\xe2\x82", "\xc0\x80", "\xe0\x80\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\x80", "\xc3("})
            QVERIFY2(!volume::Utf16Length(text), text);
    }

    void whatIsNoUser()
    {
        const QByteArray good = R"({"type":"pba-user","keyslots":["0"],"domain":"","user":"a"})";
        QVERIFY(volume::DecodeUser(good.toStdString()));
        QVERIFY(!volume::DecodeUser("") && !volume::DecodeUser(std::string(100000, '[')));
        const std::pair<const char *, const char *> spoilt[] = {
            {"pba-user", "x"},     {"\"pba-user\"", "1"},       {"[\"0\"]", "\"0\""},
            {"\"0\"", "0"},        {"\"0\"", "\"\""},           {"\"0\"", "\"1x\""},
            {"\"0\"", "\"-1\""},   {"\"0\"", "\"32\""},         {"keyslots", "k"},
            {"\"\"", "null"},      {"\"a\"", "\"\""},           {"\"a\"", "[]"},
            {"\"a\"", "\"\xff\""}, {"\"0\"", "\"99999999999\""}};
        for (const auto &[from, to] : spoilt) {
            const QByteArray json = QByteArray(good).replace(from, to);
            QVERIFY2(json != good && !volume::DecodeUser(json.toStdString()), json);
        }
    }
    void aUserObjectIsReadBack()
    {
        const volume::User user{{"D\"\\", "\u00e4nne"}, {31, 0}};
        const auto decoded = volume::DecodeUser(volume::EncodeUser(user));
        QVERIFY(decoded && decoded->name == user.name && decoded->keyslots == user.keyslots);
        const auto repeated = volume::DecodeUser(
            R"({"type":"pba-user","keyslots":["3","3","3"],"domain":"","user":"a","more":{"x":1}})");
        QVERIFY(repeated && repeated->keyslots == std::vector<int>{3});
    }

    void aMappingIsLookedUp_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("uuid");
        QTest::addColumn<QString>("backingFile");
        QTest::addColumn<bool>("second");
        QTest::addColumn<bool>("ours");
        const auto row = [](const char *what, const char *name, const char *uuid, const char *file,
                            bool second, bool ours) {
            QTest::newRow(what) << QByteArray(name) << QByteArray(uuid) << QString(file) << second << ours;
        };
        row("ours", "root", "CRYPT-LUKS2-0123abcd-root", "volume.img", false, true);
        row("another name", "data", "CRYPT-LUKS2-0123abcd-root", "volume.img", false, false);
        row("another volume", "root", "CRYPT-LUKS2-0123abce-root", "volume.img", false, false);
        row("a longer identifier", "root", "CRYPT-LUKS2-0123abcdef-root", "volume.img", false, false);
        row("no encryption", "root", "LVM-0123abcd-root", "volume.img", false, false);
        row("a copy of the file", "root", "CRYPT-LUKS2-0123abcd-root", "copy.img", false, false);
        row("over two devices", "root", "CRYPT-LUKS2-0123abcd-root", "volume.img", true, false);
    }
    void aMappingIsLookedUp()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, uuid);
        QFETCH(QString, backingFile);
        QFETCH(bool, second);
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
        const bool found = volume::IsMappedOver(root.filePath("sys").toStdString(), "root", "0123-abcd",
                                                root.filePath("volume.img").toStdString());
        QTEST(found, "ours");
    }
};

PBA_REGISTER_TEST(VolumePartsTest);

#include "tst_parts.moc"
