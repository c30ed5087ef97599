// Users and logins on real LUKS2 files, also together with the standard tool.
#include <QProcess>

#include <libcryptsetup.h>

#include "scratch_volume.h"
#include "test_main.h"

using volume::Error;
using volume::Volume;

Q_DECLARE_METATYPE(volume::Error)

namespace {

constexpr char kStandardTool[] = "/usr/sbin/cryptsetup";

int RunStandardTool(const QStringList &arguments, const QByteArray &input)
{
    QProcess tool;
    tool.start(QString::fromLatin1(kStandardTool), arguments);
    tool.write(input);
    tool.closeWriteChannel();
    tool.waitForFinished();
    return tool.exitCode();
}

void Format(const std::string &path, const char *type, const QByteArray &password)
{
    QFile file(QString::fromStdString(path));
    QVERIFY(file.open(QFile::WriteOnly) && file.resize(20 * 1024 * 1024));
    QCOMPARE(RunStandardTool({"luksFormat", "-q", "--type", type, "--pbkdf", "pbkdf2",
                              "--pbkdf-force-iterations", "1000", file.fileName(), "-"},
                             password),
             0);
}

void Overwrite(const std::string &path, qint64 offset, const QByteArray &bytes)
{
    QFile file(QString::fromStdString(path));
    QVERIFY(file.open(QFile::ReadWrite) && file.seek(offset));
    QCOMPARE(file.write(bytes), bytes.size());
}

int CountKeyslots(const std::string &path)
{
    crypt_device *device = nullptr;
    int count = 0;
    if (crypt_init(&device, path.c_str()) == 0 && crypt_load(device, CRYPT_LUKS2, nullptr) == 0) {
        for (int slot = 0; slot < volume::kMaxKeyslots; ++slot)
            count += crypt_keyslot_status(device, slot) != CRYPT_SLOT_INACTIVE;
    }
    crypt_free(device);
    return count;
}

} // namespace

class VolumeTest : public QObject
{
    Q_OBJECT

private slots:
    void login_data()
    {
        QTest::addColumn<std::string>("domain");
        QTest::addColumn<std::string>("user");
        QTest::addColumn<std::string>("password");
        QTest::addColumn<Error>("error");
        const std::string annas = ScratchVolume::kPassword;
        const std::string boriss = ScratchVolume::kOtherPassword;
        QTest::newRow("right") << std::string() << std::string("anna") << annas << Error::None;
        QTest::newRow("right, in a domain")
            << std::string("OFFICE") << std::string("boris") << boriss << Error::None;
        QTest::newRow("wrong password")
            << std::string() << std::string("anna") << std::string("no") << Error::WrongPassword;
        QTest::newRow("empty password")
            << std::string() << std::string("anna") << std::string() << Error::WrongPassword;
        QTest::newRow("another user's password")
            << std::string() << std::string("anna") << boriss << Error::WrongPassword;
        QTest::newRow("unknown user, a known password")
            << std::string() << std::string("carl") << annas << Error::WrongPassword;
        QTest::newRow("no domain where there is one")
            << std::string() << std::string("boris") << boriss << Error::WrongPassword;
        QTest::newRow("name in other letters")
            << std::string() << std::string("Anna") << annas << Error::WrongPassword;
        QTest::newRow("empty name") << std::string() << std::string() << annas << Error::WrongPassword;
    }
    void login()
    {
        QFETCH(std::string, domain);
        QFETCH(std::string, user);
        QFETCH(std::string, password);
        QFETCH(Error, error);
        const auto opened = m_scratch.Open();
        volume::Secret key;
        QCOMPARE(opened->Login({domain, user}, MakeSecret(password), nullptr), error);
        QCOMPARE(opened->DerivationCount(), 1u);
        QCOMPARE(opened->Login({domain, user}, MakeSecret(password), &key), error);
        QCOMPARE(opened->DerivationCount(), 2u);
        QCOMPARE(key.Size(), error == Error::None ? 64u : 0u);
    }

    // Whoever can write the header, but knows no password, may add such a keyslot and an object for it.
    void anUnboundKeyslotLetsNobodyIn()
    {
        ScratchVolume scratch;
        crypt_device *device = nullptr;
        QCOMPARE(crypt_init(&device, scratch.Path().c_str()), 0);
        QCOMPARE(crypt_load(device, CRYPT_LUKS2, nullptr), 0);
        const int slot = crypt_keyslot_add_by_key(device, CRYPT_ANY_SLOT, nullptr, 64, "m", 1,
                                                  CRYPT_VOLUME_KEY_NO_SEGMENT);
        QVERIFY(slot >= 0);
        QVERIFY(crypt_token_json_set(device, CRYPT_ANY_TOKEN,
                                     volume::EncodeUser({{"", "mallory"}, {slot}}).c_str()) >= 0);
        crypt_free(device);
        volume::Secret key;
        QCOMPARE(scratch.Open()->Login({"", "mallory"}, MakeSecret("m"), nullptr), Error::WrongPassword);
        QCOMPARE(scratch.Open()->Login({"", "mallory"}, MakeSecret("m"), &key), Error::WrongPassword);
    }

    void theStandardToolOpensOurs()
    {
        const QString path = QString::fromStdString(m_scratch.Path());
        QCOMPARE(
            RunStandardTool({"open", "--test-passphrase", "--key-slot", "0", path}, ScratchVolume::kPassword),
            0);
        QVERIFY(RunStandardTool({"open", "--test-passphrase", path}, "no") != 0);
    }

    void usersOnAVolumeOfTheStandardTool()
    {
        ScratchVolume scratch;
        Format(scratch.Path(), "luks2", "master");
        const auto opened = scratch.Open();
        volume::Secret key;
        QVERIFY(!opened->SharedCost());
        QCOMPARE(opened->Login({"", "anna"}, MakeSecret("master"), nullptr), Error::WrongPassword);
        QCOMPARE(opened->Authorise(MakeSecret("wrong"), &key), Error::WrongPassword);
        QCOMPARE(opened->Authorise(MakeSecret("master"), &key), Error::None);
        const auto cost = volume::KeyCost::ForRandomSecret();
        QCOMPARE(opened->AddUser({"", "anna"}, key, MakeSecret("new"), cost), Error::None);
        QCOMPARE(opened->AddUser({"", "anna"}, key, MakeSecret("newer"), cost), Error::UserExists);
        QCOMPARE(scratch.Open()->Login({"", "anna"}, MakeSecret("new"), nullptr), Error::None);
        QCOMPARE(scratch.Open()->Login({"", "anna"}, MakeSecret("master"), nullptr), Error::WrongPassword);
        QCOMPARE(scratch.Open()->Authorise(MakeSecret("master"), &key), Error::None);
    }

    void aFullHeaderRefusesAndStaysSound_data()
    {
        QTest::addColumn<bool>("ours");
        QTest::addColumn<int>("leastUsers");
        QTest::newRow("our metadata size") << true << 30;
        QTest::newRow("the standard tool's") << false << 20;
    }
    void aFullHeaderRefusesAndStaysSound()
    {
        QFETCH(bool, ours);
        QFETCH(int, leastUsers);
        ScratchVolume scratch;
        if (ours)
            scratch.MakeEmpty();
        else
            Format(scratch.Path(), "luks2", "master");
        volume::Secret key;
        auto opened = scratch.Open();
        if (ours) {
            scratch.Add({"", "first"}, "first");
            opened = scratch.Open();
            QCOMPARE(opened->Authorise(MakeSecret("first"), &key), Error::None);
        } else {
            QCOMPARE(opened->Authorise(MakeSecret("master"), &key), Error::None);
        }
        const auto cost = volume::KeyCost::ForRandomSecret();
        Error error = Error::None;
        int added = 0;
        for (; error == Error::None && added <= volume::kMaxKeyslots; added += error == Error::None)
            error = opened->AddUser({"", "user " + std::to_string(added)}, key, MakeSecret("p"), cost);
        QCOMPARE(error, Error::NoSpace);
        QVERIFY2(added >= leastUsers, qPrintable(QString::number(added)));
        QCOMPARE(CountKeyslots(scratch.Path()), added + 1);
        const std::string last = "user " + std::to_string(added - 1);
        QCOMPARE(scratch.Open()->Login({"", last}, MakeSecret("p"), nullptr), Error::None);
    }

    void openingTellsWhatIsWrong_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<Error>("error");
        QTest::newRow("empty") << QByteArray() << Error::NotLuks2;
        QTest::newRow("short") << QByteArray("LUKS") << Error::NotLuks2;
        QTest::newRow("something else") << QByteArray(1 << 20, 'x') << Error::NotLuks2;
        QTest::newRow("an older version")
            << QByteArray("LUKS\xba\xbe\0\1", 8) + QByteArray(1 << 20, '\0') << Error::NotLuks2;
        QTest::newRow("only a beginning")
            << QByteArray("LUKS\xba\xbe\0\2", 8) + QByteArray(1 << 20, '\0') << Error::HeaderUnreadable;
    }
    void openingTellsWhatIsWrong()
    {
        QFETCH(QByteArray, content);
        QFETCH(Error, error);
        const std::string path = m_scratch.File("other.img");
        QFile file(QString::fromStdString(path));
        QVERIFY(file.open(QFile::WriteOnly) && file.write(content) == content.size());
        file.close();
        std::unique_ptr<Volume> opened;
        QCOMPARE(Volume::Open(path, &opened), error);
        QVERIFY(!opened);
        QCOMPARE(Volume::Open(m_scratch.File("missing"), &opened), Error::NotFound);
        QCOMPARE(Volume::Open(m_scratch.File(""), &opened), Error::NotLuks2); // the directory
    }

    void damagedHeaders()
    {
        ScratchVolume scratch;
        const QByteArray noise(4096, '\x5a');
        Overwrite(scratch.Path(), 0, noise); // the second copy serves
        QCOMPARE(scratch.Open()->Login({"", "anna"}, MakeSecret(ScratchVolume::kPassword), nullptr),
                 Error::None);
        Overwrite(scratch.Path(), 4096, noise);
        Overwrite(scratch.Path(), 64 * 1024 + 4096, noise);
        std::unique_ptr<Volume> opened;
        QCOMPARE(Volume::Open(scratch.Path(), &opened), Error::HeaderUnreadable);
    }

    void aVolumeThatVanishes()
    {
        ScratchVolume scratch;
        const auto opened = scratch.Open();
        QVERIFY(QFile::remove(QString::fromStdString(scratch.Path())));
        QCOMPARE(opened->Login({"", "anna"}, MakeSecret(ScratchVolume::kPassword), nullptr), Error::Vanished);
    }

    void whatIsNoUser_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a list") << QByteArray("[]");
        QTest::newRow("deep") << QByteArray(100000, '[');
        QTest::newRow("another type") << QByteArray(R"({"type":"x","keyslots":[],"domain":"","user":"a"})");
        QTest::newRow("type is a number") << QByteArray(R"({"type":1,"keyslots":[],"domain":"","user":"a"})");
        QTest::newRow("no user") << QByteArray(R"({"type":"pba-user","keyslots":[],"domain":""})");
        QTest::newRow("an empty user")
            << QByteArray(R"({"type":"pba-user","keyslots":[],"domain":"","user":""})");
        QTest::newRow("user is a list")
            << QByteArray(R"({"type":"pba-user","keyslots":[],"domain":"","user":[]})");
        QTest::newRow("no domain") << QByteArray(R"({"type":"pba-user","keyslots":[],"user":"a"})");
        QTest::newRow("no keyslots") << QByteArray(R"({"type":"pba-user","domain":"","user":"a"})");
        QTest::newRow("keyslots is text")
            << QByteArray(R"({"type":"pba-user","keyslots":"0","domain":"","user":"a"})");
        for (const char *slot :
             {"0", "null", "\"\"", "\"x\"", "\"1x\"", "\"-1\"", "\"32\"", "\"99999999999\"", "[]"}) {
            QTest::addRow("keyslot %s", slot)
                << QByteArray(R"({"type":"pba-user","keyslots":[)") + slot + R"(],"domain":"","user":"a"})";
        }
        QTest::newRow("broken UTF-8")
            << QByteArray("{\"type\":\"pba-user\",\"keyslots\":[],\"domain\":\"\",\"user\":\"\xff\"}");
    }
    void whatIsNoUser()
    {
        QFETCH(QByteArray, json);
        QVERIFY(!volume::DecodeUser(json.toStdString()));
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

private:
    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(VolumeTest);

#include "tst_volume.moc"
