// Logins and headers on real LUKS2 files.
#include <libcryptsetup.h>

#include "scratch_volume.h"
#include "test_files.h"
#include "test_main.h"

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
            volume::Secret key;
            QCOMPARE(opened->Login(name, MakeSecret(password), nullptr), error);
            QCOMPARE(opened->DerivationCount(), 1u);
            QCOMPARE(opened->Login(name, MakeSecret(password), &key), error);
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
        volume::Secret key;
        QCOMPARE(scratch.Open()->Login({"", "mallory"}, MakeSecret("m"), nullptr), Error::WrongPassword);
        QCOMPARE(scratch.Open()->Login({"", "mallory"}, MakeSecret("m"), &key), Error::WrongPassword);
    }

    // A volume may have been made on a computer with more processors than this one.
    void theNumberOfThreadsIsNoCost()
    {
        ScratchVolume scratch;
        const auto header = LoadHeader(scratch);
        constexpr std::string_view kKnown = ScratchVolume::kPassword;
        for (const std::uint32_t threads : {1, 2}) {
            const crypt_pbkdf_type type{CRYPT_KDF_ARGON2ID,      "sha256", 0, 4, 32, threads,
                                        CRYPT_PBKDF_NO_BENCHMARK};
            QCOMPARE(crypt_set_pbkdf_type(header.get(), &type), 0);
            QVERIFY(crypt_keyslot_add_by_passphrase(header.get(), CRYPT_ANY_SLOT, kKnown.data(),
                                                    kKnown.size(), "x", 1) >= 0);
        }
        const std::vector<volume::Keyslot> keyslots = scratch.Open()->Keyslots();
        QVERIFY(keyslots[2].cost == keyslots[3].cost && !(keyslots[1].cost == keyslots[2].cost));
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
            QCOMPARE(scratch.Open()->Login({"", "anna"}, MakeSecret(ScratchVolume::kPassword), nullptr),
                     Error::None);
        }
    }

    void unusableHeaders()
    {
        std::unique_ptr<volume::Volume> opened;
        for (const auto &[size, expected] :
             {std::pair(0, Error::NotLuks2), std::pair(5, Error::NotLuks2),
              std::pair(4096, Error::HeaderUnreadable), std::pair(0x11000, Error::HeaderUnreadable),
              std::pair(0x40000, Error::HeaderUnreadable)}) {
            ScratchVolume scratch;
            QVERIFY(QFile::resize(QString::fromStdString(scratch.Path()), size));
            QCOMPARE(volume::Volume::Open(scratch.Path(), &opened), expected);
        }
        // A file, but its beginning cannot be read, as on a failing disk.
        QCOMPARE(volume::Volume::Open("/proc/self/mem", &opened), Error::HeaderUnreadable);

        ScratchVolume scratch;
        const auto before = scratch.Open();
        for (const qint64 text : {0x1000, 0x11000}) // of both copies
            Overwrite(scratch.Path(), text, QByteArray(4096, '\x5a'));
        QCOMPARE(volume::Volume::Open(scratch.Path(), &opened), Error::HeaderUnreadable);
        QVERIFY(QFile::remove(QString::fromStdString(scratch.Path())));
        QCOMPARE(before->Login({"", "anna"}, MakeSecret(ScratchVolume::kPassword), nullptr), Error::Vanished);
    }

private:
    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(VolumeTest);

#include "tst_volume.moc"
