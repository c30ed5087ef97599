// Logins and headers on real LUKS2 files.
#include <libcryptsetup.h>

#include "scratch_volume.h"
#include "test_main.h"

using volume::Error;
using volume::Volume;

Q_DECLARE_METATYPE(volume::Error)

namespace {

// For what an administrator could do to a header with other tools.
std::unique_ptr<crypt_device, decltype(&crypt_free)> LoadHeader(const ScratchVolume &scratch)
{
    crypt_device *device = nullptr;
    if (crypt_init(&device, scratch.Path().c_str()) != 0 || crypt_load(device, CRYPT_LUKS2, nullptr) != 0)
        qFatal("no header");
    return {device, crypt_free};
}

int AddObject(crypt_device *device, const std::string &json)
{
    return crypt_token_json_set(device, CRYPT_ANY_TOKEN, json.c_str());
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
    void login_data()
    {
        QTest::addColumn<QByteArray>("domain");
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QByteArray>("password");
        QTest::addColumn<Error>("error");
        const auto row = [](const char *what, const char *domain, const char *user, const char *password,
                            Error error = Error::WrongPassword) {
            QTest::newRow(what) << QByteArray(domain) << QByteArray(user) << QByteArray(password) << error;
        };
        const char *annas = ScratchVolume::kPassword;
        const char *boriss = ScratchVolume::kOtherPassword;
        row("right", "", "anna", annas, Error::None);
        row("right, in a domain", "OFFICE", "boris", boriss, Error::None);
        row("wrong password", "", "anna", "no");
        row("empty password", "", "anna", "");
        row("another user's password", "", "anna", boriss);
        row("unknown user, a known password", "", "carl", annas);
        row("no domain where there is one", "", "boris", boriss);
        row("name in other letters", "", "Anna", annas);
    }
    void login()
    {
        QFETCH(QByteArray, domain);
        QFETCH(QByteArray, user);
        QFETCH(QByteArray, password);
        QFETCH(Error, error);
        const volume::UserName name{domain.toStdString(), user.toStdString()};
        const auto opened = m_scratch.Open();
        volume::Secret key;
        QCOMPARE(opened->Login(name, MakeSecret(password.data()), nullptr), error);
        QCOMPARE(opened->DerivationCount(), 1u);
        QCOMPARE(opened->Login(name, MakeSecret(password.data()), &key), error);
        QCOMPARE(opened->DerivationCount(), 2u);
        QCOMPARE(key.Size(), error == Error::None ? 64u : 0u);
    }

    // Whoever can write the header, but knows no password, may add such a keyslot and an object for it.
    void anUnboundKeyslotLetsNobodyIn()
    {
        ScratchVolume scratch;
        const auto header = LoadHeader(scratch);
        const int slot = crypt_keyslot_add_by_key(header.get(), CRYPT_ANY_SLOT, nullptr, 64, "m", 1,
                                                  CRYPT_VOLUME_KEY_NO_SEGMENT);
        QVERIFY(slot >= 0 && AddObject(header.get(), volume::EncodeUser({{"", "mallory"}, {slot}})) >= 0);
        volume::Secret key;
        QCOMPARE(scratch.Open()->Login({"", "mallory"}, MakeSecret("m"), nullptr), Error::WrongPassword);
        QCOMPARE(scratch.Open()->Login({"", "mallory"}, MakeSecret("m"), &key), Error::WrongPassword);
    }

    // With room for a keyslot still, but for no object that names its user.
    void aFullHeaderRefusesAndStaysSound()
    {
        ScratchVolume scratch;
        std::string filler = "{\"type\":\"x\",\"keyslots\":[],\"filler\":\"\"}";
        filler.insert(filler.size() - 2, 61440, 'x');
        while (AddObject(LoadHeader(scratch).get(), filler) < 0)
            filler.erase(filler.size() - 202, 200);
        QVERIFY(filler.size() > 55000);
        const auto opened = scratch.Open();
        volume::Secret key;
        QCOMPARE(opened->Authorise(MakeSecret(ScratchVolume::kPassword), &key), Error::None);
        const auto cost = volume::KeyCost::ForRandomSecret();
        QCOMPARE(opened->AddUser({"", std::string(256, 'x')}, key, MakeSecret("p"), cost), Error::NoSpace);
        QCOMPARE(crypt_keyslot_status(LoadHeader(scratch).get(), 2), CRYPT_SLOT_INACTIVE);
        QCOMPARE(scratch.Open()->Login({"OFFICE", "boris"}, MakeSecret(ScratchVolume::kOtherPassword), &key),
                 Error::None);
    }

    void damagedHeaders()
    {
        ScratchVolume scratch;
        const volume::Secret password = MakeSecret(ScratchVolume::kPassword);
        const QByteArray noise(4096, '\x5a');
        Overwrite(scratch.Path(), 0, noise); // the second copy serves
        const auto opened = scratch.Open();
        QCOMPARE(opened->Login({"", "anna"}, password, nullptr), Error::None);
        Overwrite(scratch.Path(), 4096, noise);
        Overwrite(scratch.Path(), 64 * 1024 + 4096, noise);
        std::unique_ptr<Volume> damaged;
        QCOMPARE(Volume::Open(scratch.Path(), &damaged), Error::HeaderUnreadable);
        QVERIFY(QFile::remove(QString::fromStdString(scratch.Path())));
        QCOMPARE(opened->Login({"", "anna"}, password, nullptr), Error::Vanished);
    }

private:
    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(VolumeTest);

#include "tst_volume.moc"
