// What a volume is built from: text, user objects, and the look-up of a mapping.
#include <QDir>
#include <QTemporaryDir>

#include "test_files.h"
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

        for (const char *text :
             {"\xe2\x82", "\xc0\x80", "\xe0\x80\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\x80", "\xc3("})
            QVERIFY2(!volume::Utf16Length(text), text);
    }

    void whatIsNoUser()
    {
        const QByteArray good = R"({"type":"pba-user","keyslots":["0"],"domain":"","user":"a"})";
        const auto user = volume::DecodeUser(good.toStdString());
        QVERIFY(user && user->name.user == "a" && user->keyslots == std::vector<int>{0});
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
    // Each row but the first spoils one thing in a mapping that is ours.
    void aMappingIsLookedUp()
    {
        const std::pair<QString, QByteArray> rows[] = {
            {"dm/name", "root"},
            {"dm/name", "data"},
            {"dm/uuid", "CRYPT-LUKS2-0123abce-root"},
            {"dm/uuid", "CRYPT-LUKS2-0123abcdef-root"}, // a longer identifier
            {"dm/uuid", "LVM-0123abcd-root"},
            {"slaves/loop0/loop/backing_file", "/proc/self/exe"},
            {"slaves/sda/dev", "8:0"}, // a second device
        };
        for (const auto &[path, line] : rows) {
            QTemporaryDir root;
            const auto write = [&](const QString &name, const QByteArray &content) {
                QDir().mkpath(QFileInfo(root.filePath(name)).path());
                WriteFile(root.filePath(name), content + '\n');
            };
            write("volume.img", "v");
            write("block/dm-3/dm/name", "root");
            write("block/dm-3/dm/uuid", "CRYPT-LUKS2-0123abcd-root");
            write("block/dm-3/slaves/loop0/dev", "7:0");
            write("block/dm-3/slaves/loop0/loop/backing_file", root.filePath("volume.img").toUtf8());
            write("block/dm-3/" + path, line);
            const bool ours = volume::IsMappedOver(root.path().toStdString(), "root", "0123-abcd",
                                                   root.filePath("volume.img").toStdString());
            QVERIFY2(ours == (&line == &rows[0].second), line);
        }
    }
};

PBA_REGISTER_TEST(VolumePartsTest);

#include "tst_parts.moc"
