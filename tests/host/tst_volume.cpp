// SPDX-License-Identifier: Apache-2.0
// Logins and headers on real LUKS2 files, and the texts, objects and mappings that belong to them.
#include <libcryptsetup.h>

#include "base/text.h"
#include "tests/host/scratch_volume.h"
#include "tests/support/test_files.h"
#include "tests/support/test_main.h"
#include "volume/luks/mapper_options.h"
#include "volume/luks/mapping.h"
#include "volume/luks/policy.h"
#include "volume/luks/user.h"
#include "volume/luks/users.h"
#include "volume/recovery/enrolment.h"

using volume::Error;

namespace {

// For what an administrator could do to a header with other tools.
std::unique_ptr<crypt_device, decltype(&crypt_free)> LoadHeader(const ScratchVolume &scratch)
{
    crypt_device *device = nullptr;
    if (crypt_init(&device, scratch.Path().c_str()) != 0 || crypt_load(device, CRYPT_LUKS2, nullptr) != 0)
        qFatal("no header");
    return {device, crypt_free};
}

void Overwrite(const std::string &path, qint64 offset, const QByteArray &bytes)
{
    QFile file(QString::fromStdString(path));
    QVERIFY(file.open(QFile::ReadWrite) && file.seek(offset));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

class VolumeTest : public QObject
{
    Q_OBJECT

private slots:
    // Whatever is wrong costs one derivation and is answered alike.
    void login()
    {
        const std::string annas = ScratchVolume::kPassword;
        const std::string boriss = ScratchVolume::kOtherPassword;
        const std::tuple<volume::UserName, std::string, bool> rows[] = {
            {{"", "anna"}, annas, true},       {{"OFFICE", "boris"}, boriss, true},
            {{"", "anna"}, "no", false},       {{"offIce", "BORIS"}, boriss, true},
            {{"", "anna"}, "", false},         {{"", "boris"}, boriss, false},
            {{"", "anna"}, boriss, false},     {{"", "carl"}, annas, false},
            {{"", "\u00e4nna"}, annas, false},
        };
        for (const auto &[name, password, right] : rows) {
            const Error error = right ? Error::None : Error::WrongPassword;
            const auto opened = m_scratch.Open();
            base::Secret key;
            QCOMPARE(volume::Users(*opened).Login(name, MakeSecret(password), nullptr), error);
            QCOMPARE(opened->DerivationCount(), 1u);
            QCOMPARE(volume::Users(*opened).Login(name, MakeSecret(password), &key), error);
            QCOMPARE(opened->DerivationCount(), 2u);
            QCOMPARE(key.Size(), right ? 64u : 0u);
        }
    }

    // Whoever can write the header, but knows no password, may add such a keyslot and an object for it.
    void anUnboundKeyslotLetsNobodyIn()
    {
        ScratchVolume scratch;
        const auto header = LoadHeader(scratch);
        QCOMPARE(volume::KeyCost::ForRandomSecret().ApplyTo(header.get()), 0);
        QCOMPARE(crypt_keyslot_add_by_key(header.get(), 2, nullptr, 64, "m", 1, CRYPT_VOLUME_KEY_NO_SEGMENT),
                 2);
        const std::string object = volume::EncodeUser({{"", "mallory"}, {2}});
        QVERIFY(crypt_token_json_set(header.get(), CRYPT_ANY_TOKEN, object.c_str()) >= 0);
        base::Secret key;
        QCOMPARE(scratch.Login({"", "mallory"}, "m"), Error::WrongPassword);
        QCOMPARE(volume::Users(*scratch.Open()).Login({"", "mallory"}, MakeSecret("m"), &key),
                 Error::WrongPassword);
    }

    // A single wrong bit of either copy, wherever it stands, leaves the other one.
    void flippedBits()
    {
        ScratchVolume scratch;
        const QByteArray sound = ReadFile(QString::fromStdString(scratch.Path())).first(0x20000);
        for (const qint64 offset : {0, 7, 0x30, 0x1c0, 0x1000, 0x1100, 0x10000, 0x10040, 0x11010}) {
            QByteArray flipped = sound;
            flipped[offset] = static_cast<char>(flipped[offset] ^ 4);
            Overwrite(scratch.Path(), 0, flipped);
            QCOMPARE(scratch.Login({"", "anna"}, ScratchVolume::kPassword), Error::None);
        }
    }

    void unusableHeaders()
    {
        std::unique_ptr<volume::Header> opened;
        for (const auto &[size, expected] :
             {std::pair(5, Error::NotLuks2), std::pair(4096, Error::HeaderUnreadable),
              std::pair(0x40000, Error::HeaderUnreadable)}) {
            ScratchVolume scratch;
            QVERIFY(QFile::resize(QString::fromStdString(scratch.Path()), size));
            QCOMPARE(volume::Header::Open(scratch.Path(), &opened), expected);
        }
        // A file, but its beginning cannot be read, as on a failing disk.
        QCOMPARE(volume::Header::Open("/proc/self/mem", &opened), Error::HeaderUnreadable);

        ScratchVolume scratch;
        const auto before = scratch.Open();
        for (const qint64 text : {0x1000, 0x11000}) // of both copies
            Overwrite(scratch.Path(), text, QByteArray(4096, '\x5a'));
        QCOMPARE(volume::Header::Open(scratch.Path(), &opened), Error::HeaderUnreadable);
        QVERIFY(QFile::remove(QString::fromStdString(scratch.Path())));
        QCOMPARE(volume::Users(*before).Login({"", "anna"}, MakeSecret(ScratchVolume::kPassword), nullptr),
                 Error::Vanished);
    }

    void textIsEncoded()
    {
        const std::string text = "a\u00e9\u0434\u20ac\U0001F600";
        const std::u16string wide = u"a\u00e9\u0434\u20ac\U0001F600";
        QCOMPARE(base::ToUtf8(wide), text);
        QVERIFY(base::ToSecretUtf8(wide).View() == text);
        QCOMPARE(base::ToUtf16(text), wide);
        QCOMPARE(base::Utf16Length(text), std::optional(wide.size()));
        QCOMPARE(base::ToUtf8(std::u16string{u'x', 0xD83D, u'y', 0xDE00, 0xD83D}),
                 "x\uFFFDy\uFFFD\uFFFD"); // halves of pairs
        QVERIFY(base::ToSecretUtf8({u"a\0b", 3}).View() == std::string_view("a\0b", 3));
        QCOMPARE(base::Printable("\u00e4\n\x1b[1m\xff\u202e\U000e0041 \\u\\u{a}"),
                 "\u00e4"
                 R"(\u{a}\u{1b}[1m\xff\u{202e}\u{e0041} \u\u{5c}u{a})");

        for (const char *text :
             {"\xe2\x82", "\xc0\x80", "\xe0\x80\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\x80", "\xc3("})
            QVERIFY2(!base::Utf16Length(text), text);
    }

    void namesOfNewUsers()
    {
        for (const char *name :
             {"\n", "a\u202eb", "a\u200bb", "a\u0085b", "a\u3164", "a\u00a0b", "a\u2028", " a", "a "}) {
            QVERIFY2(!volume::FindNameFault({"", name}) && volume::FindNewNameFault({"", name}), name);
            QVERIFY2(volume::FindNewNameFault({name, "a"}), name);
        }
        const std::string longest(volume::kMaxNameBytes, 'x');
        QVERIFY(!volume::FindNewNameFault({"OFFICE 2", "\u00e4\u0416\u0627\U0001F600"}));
        QVERIFY(!volume::FindNameFault({longest, longest}) && volume::FindNameFault({"", longest + 'x'}));
        QVERIFY(volume::FindNameFault({"", ""}) && volume::FindNameFault({"\xff", "a"}));
    }

    // Whatever other programs left in the header: each pair spoils one thing in an object that is ours.
    void whatIsNoObjectOfOurs()
    {
        using Pair = std::pair<const char *, const char *>;
        const auto refusesAll = [](auto decode, const QByteArray &good, const auto &spoilt) {
            QVERIFY2(decode(good.toStdString()), good);
            QVERIFY(!decode("") && !decode(std::string(100000, '[')));
            for (const auto &[from, to] : spoilt) {
                const QByteArray json = QByteArray(good).replace(from, to);
                QVERIFY2(json != good && !decode(json.toStdString()), json);
            }
        };
        const Pair users[] = {{"pba-user", "x"},     {"\"pba-user\"", "1"},       {"[\"0\"]", "\"0\""},
                              {"\"0\"", "0"},        {"\"0\"", "\"\""},           {"\"0\"", "\"1x\""},
                              {"\"0\"", "\"-1\""},   {"\"0\"", "\"32\""},         {"keyslots", "k"},
                              {"\"\"", "null"},      {"\"a\"", "\"\""},           {"\"a\"", "[]"},
                              {"\"a\"", "\"\xff\""}, {"\"0\"", "\"99999999999\""}};
        refusesAll([](auto json) { return volume::DecodeUser(json); },
                   R"({"type":"pba-user","keyslots":["0"],"domain":"","user":"a"})", users);

        const Pair recoveries[] = {{"pba-recovery", "x"},
                                   {"\"pba-recovery\"", "7"},
                                   {"1", "2"},
                                   {"1", "\"1\""},
                                   {"\"a", "\""},
                                   {"\"a", "\"x"},
                                   {"record", "r"},
                                   {"\"b", "\""},
                                   {"binding", "b"},
                                   {"cc\"}", "cx\"}"},
                                   {"administrator", "a"}};
        const QByteArray hex(31, 'c');
        refusesAll([](auto json) { return recovery::DecodeEnrolment(json, {}); },
                   "{\"type\":\"pba-recovery\",\"version\":1,\"record\":\"a" + hex + "\",\"binding\":\"b" +
                       hex + hex + "c\",\"administrator\":\"cc" + hex + hex + "\"}",
                   recoveries);

        const Pair policies[] = {{"pba-policy", "pba-user"}, {"type", "t"}};
        refusesAll([](auto json) { return volume::DecodePolicy(json); }, R"({"type":"pba-policy"})",
                   policies);
    }

    // Each row but the first spoils one thing in a mapping that is ours.
    void optionsOfAMapping()
    {
        QCOMPARE(volume::ActivationFlags(""), 0u);
        QCOMPARE(volume::ActivationFlags("luks,no-discard,discards,keyfile=discard,"), 0u);
        QCOMPARE(volume::ActivationFlags("luks,discard,,initramfs,no-read-workqueue"),
                 CRYPT_ACTIVATE_ALLOW_DISCARDS | CRYPT_ACTIVATE_NO_READ_WORKQUEUE);
    }

    void aMappingIsLookedUp()
    {
        const std::pair<QString, QByteArray> rows[] = {
            {"dm/name", "root"},
            {"dm/name", "data"},
            {"dm/uuid", "CRYPT-LUKS2-0123abce-root"},
            {"dm/uuid", "CRYPT-LUKS2-0123abcdef-root"}, // a longer identifier
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

private:
    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(VolumeTest);

#include "tst_volume.moc"
