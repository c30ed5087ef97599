// The recovery's protocol: what both sides compute, and what neither may take.
#include <nlohmann/json.hpp>

#include "recovery/administrator_key.h"
#include "recovery/challenge.h"
#include "recovery/escrow_record.h"
#include "recovery/response.h"
#include "scratch_volume.h"
#include "test_main.h"

using namespace recovery;

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEFGHJKMNPQRSTVWXYZ";

template <std::size_t Size>
Bytes<Size> CountingUp(std::uint8_t first)
{
    Bytes<Size> bytes;
    for (std::uint8_t &byte : bytes)
        byte = first++;
    return bytes;
}

template <std::size_t Size>
SecretBytes<Size> SecretCountingUp(std::uint8_t first)
{
    SecretBytes<Size> secret;
    for (std::size_t i = 0; i < Size; ++i)
        secret.Data()[i] = first++;
    return secret;
}

// Each part counts up from its first byte, as in the published vector.
struct Parts
{
    std::uint8_t ephemeral = 0x01;
    std::uint8_t administrator = 0x65;
    std::uint8_t volume = 0x40;
    std::uint8_t record = 0x60;
    std::uint8_t binding = 0x80;
    std::uint8_t secret = 0xC0;
    volume::UserName name{"example", "alice"};

    SecretKey Ephemeral() const { return SecretCountingUp<32>(ephemeral); }
    SecretKey Administrator() const { return SecretCountingUp<32>(administrator); }
    RecoverySecret Secret() const { return SecretCountingUp<16>(secret); }
    recovery::Identity Identity() const
    {
        return {CountingUp<16>(volume), CountingUp<16>(record), CountingUp<32>(binding)};
    }
    recovery::Enrolment Enrolment() const
    {
        return {Identity(), PublicKeyOf(Administrator()), {5}, false, {}};
    }
    recovery::Challenge Challenge() const { return MakeChallenge(Identity(), PublicKeyOf(Ephemeral())); }
    ResponseLines Response() const
    {
        return *MakeResponse(Administrator(), Identity(), PublicKeyOf(Ephemeral()), Secret(), name);
    }
};

using UserNames = std::initializer_list<volume::UserName>;

std::vector<volume::User> Users(UserNames names)
{
    std::vector<volume::User> users;
    for (const volume::UserName &name : names)
        users.push_back({.name = name, .keyslots = {}});
    return users;
}

// Every string that differs from `right` in one digit or in the places of two.
std::vector<std::string> Misheard(std::string_view right)
{
    std::vector<std::string> wrong;
    for (std::size_t i = 0; i < right.size(); ++i) {
        for (char digit : kDigits) {
            std::string changed(right);
            changed[i] = digit;
            if (digit != right[i])
                wrong.push_back(changed);
        }
        for (std::size_t j = 0; j < i; ++j) {
            std::string changed(right);
            std::swap(changed[i], changed[j]);
            if (right[i] != right[j])
                wrong.push_back(changed);
        }
    }
    return wrong;
}

} // namespace

class RecoveryTest : public QObject
{
    Q_OBJECT

private slots:
    // The second and third come from an implementation of its own.
    void vectors_data()
    {
        QTest::addColumn<QByteArrayList>("challenge");
        QTest::addColumn<QByteArrayList>("response");
        QTest::newRow("0") << QByteArrayList{"21X3FJY1884KS2VN", "NBQ0V23M6SD166XN", "5D2TN8AFPGQQY0P2",
                                             "AW6T73W95RNF9TDC"}
                           << QByteArrayList{"VDFPTRJFZE3F35PAM", "2R385JS0WGGKC16N8"};
        QTest::newRow("1") << QByteArrayList{"2WV88QAMX1YY17BA", "BP4AAMW22RM54M0D", "AVV681T6G04VTSA0",
                                             "S9KM58S06SZ4XQ0S"}
                           << QByteArrayList{"DPZRA7ETSHFJZ6G89", "KPP3D71Y8P202KP95"};
        QTest::newRow("2") << QByteArrayList{"237V2B87BQ2ZF423", "P0RDC093Y4WDV27T", "G2PHA1CV85B7JVEG",
                                             "W6AC99ECYWH6AE2R"}
                           << QByteArrayList{"TQ0RHCF4RZ62JRDAM", "GJ17WD4P3MH0V1S9A"};
    }
    void vectors()
    {
        QFETCH(QByteArrayList, challenge);
        QFETCH(QByteArrayList, response);
        const Parts vectors[] = {{},
                                 {0xE0, 0x11, 0xA5, 0x00, 0xF0, 0xF8, {"", "J\u00dcRGEN Stra\u00dfe"}},
                                 {0x7F, 0xD3, 0xFF, 0x33, 0x01, 0x5A, {"\u0416\u041a\u0425", "\u0130van"}}};
        // The same names, typed in another way.
        const volume::UserName typed[] = {
            {"Example", "ALICE"}, {"", "ju\u0308rgen STRASSE"}, {"\u0436\u043a\u0445", "i\u0307VAN"}};
        const int row = QByteArray(QTest::currentDataTag()).toInt();
        const Parts &parts = vectors[row];
        const ChallengeStrings strings = EncodeChallenge(parts.Challenge());
        for (std::size_t i = 0; i < strings.size(); ++i)
            QCOMPARE(QByteArray::fromStdString(strings[i]), challenge[static_cast<int>(i)]);
        const auto decoded = DecodeChallenge(strings);
        QVERIFY(decoded && BelongsTo(*decoded, parts.Identity()));
        QCOMPARE(decoded->ephemeral, PublicKeyOf(parts.Ephemeral()));
        const ResponseLines lines = parts.Response();
        for (std::size_t i = 0; i < lines.size(); ++i)
            QCOMPARE(QByteArray(lines[i].Data(), 17), response[static_cast<int>(i)]);
        const auto opened = Response::Open(parts.Ephemeral(), parts.Enrolment(), lines);
        QVERIFY(opened && AreEqual(opened->Secret().View(), parts.Secret().View()));
        QVERIFY(opened->FindUser(Users({{"", "other"}, typed[row]})) == typed[row]);
    }

    void everyMisheardStringIsRefused()
    {
        const ChallengeStrings challenge = EncodeChallenge(Parts().Challenge());
        const ResponseLines response = Parts().Response();
        int refused = 0;
        const auto check = [&](std::string_view right, auto passes, std::size_t row, std::size_t rows) {
            QVERIFY(passes(right, row));
            for (std::size_t other = 0; other < rows; ++other)
                QCOMPARE(passes(right, other), other == row);
            for (const std::string &wrong : Misheard(right)) {
                QVERIFY2(!passes(wrong, row), wrong.c_str());
                ++refused;
            }
        };
        for (std::size_t row = 0; row < challenge.size(); ++row)
            check(challenge[row], IsChallengeString, row, challenge.size());
        for (std::size_t row = 0; row < response.size(); ++row) {
            check(response[row].View(), IsResponseLine, row, response.size());
            QVERIFY(!IsChallengeString(response[row].View().substr(1), row));
        }
        QVERIFY(refused > 6 * 16 * 31);
        QVERIFY(!IsChallengeString(challenge[0].substr(1), 0) && !IsChallengeString("", 0));
    }

    void whatPeopleWriteInstead()
    {
        const auto normalised = [](std::string_view text) {
            const std::optional<volume::Secret> code = NormaliseCode(text);
            return code ? QByteArray(code->Data(), static_cast<int>(code->Size())) : QByteArray("refused");
        };
        QCOMPARE(normalised(" 2ixl-oO0z\t"), "21X1000Z");
        for (const char *bad : {"2u", "2U", "\u00e4", "2.", "2\n"})
            QCOMPARE(normalised(bad), "refused");
        QCOMPARE(normalised(std::string(1000, '0')), "refused");
    }

    // Each row changes one thing at the computer that the response was not made for.
    void aResponseForSomethingElse_data()
    {
        QTest::addColumn<int>("part");
        const char *parts[] = {"challenge", "administrator", "volume", "record"};
        for (int part = 0; part < 4; ++part)
            QTest::newRow(parts[part]) << part;
    }
    void aResponseForSomethingElse()
    {
        QFETCH(int, part);
        Parts other;
        std::uint8_t *changed[] = {&other.ephemeral, &other.administrator, &other.volume, &other.record};
        *changed[part] += 9;
        const auto opened = Response::Open(other.Ephemeral(), other.Enrolment(), Parts().Response());
        QVERIFY(opened && !AreEqual(opened->Secret().View(), Parts().Secret().View()));
        QVERIFY(!opened->FindUser(Users({{"example", "alice"}})));
        if (part > 1) // where the desk can see it, too
            QVERIFY(!BelongsTo(Parts().Challenge(), other.Identity()));
    }

    void whomAResponseNames_data()
    {
        QTest::addColumn<QByteArray>("domain");
        QTest::addColumn<QByteArray>("found");
        QTest::newRow("with its domain") << QByteArray("B") << QByteArray("B");
        QTest::newRow("no domain, though there are two") << QByteArray("") << QByteArray("none");
        QTest::newRow("another domain") << QByteArray("C") << QByteArray("none");
        QTest::newRow("no domain, the only one") << QByteArray("unique") << QByteArray("A");
    }
    void whomAResponseNames()
    {
        QFETCH(QByteArray, domain);
        QFETCH(QByteArray, found);
        Parts parts;
        parts.name.domain = domain == "unique" ? "" : domain.toStdString();
        const auto opened = Response::Open(parts.Ephemeral(), parts.Enrolment(), parts.Response());
        auto users = Users({{"A", "alice"}, {"A", "al"}});
        if (domain != "unique")
            users = Users({{"A", "alice"}, {"B", "Alice"}});
        const auto name = opened->FindUser(users);
        QCOMPARE(name ? QByteArray::fromStdString(name->domain) : "none", found);
    }

    void pointsThatKeepNothingSecret()
    {
        const char *points[] = {"0000000000000000000000000000000000000000000000000000000000000000",
                                "0100000000000000000000000000000000000000000000000000000000000000",
                                "e0eb7a7c3b41b8ae1656e3faf19fc46ada098deb9c32b1fd866205165f49b800",
                                "5f9c95bca3508c24b1d0b1559c83ef5b04445cc4581c8e86d8224eddd09f1157",
                                "ecffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
                                "edffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
                                "eeffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
                                "0900000000000000000000000000000000000000000000000000000000000080"};
        for (const char *point : points) {
            PublicKey bad;
            QVERIFY(FromHex(point, bad));
            const Parts parts;
            QVERIFY2(!MakeResponse(parts.Administrator(), parts.Identity(), bad, parts.Secret(), parts.name),
                     point);
            Enrolment planted = parts.Enrolment();
            planted.administrator = bad;
            QVERIFY2(!Response::Open(parts.Ephemeral(), planted, parts.Response()), point);
            QVERIFY2(!DecodePublicKey(EncodePublicKey(bad)), point);
        }
        const PublicKey good = PublicKeyOf(Parts().Administrator());
        QVERIFY(DecodePublicKey(EncodePublicKey(good)) == good);
    }

    void twoChallengesDiffer()
    {
        const Bytes<32> sameEntropy{};
        QVERIFY(PublicKeyOf(MakeEphemeral(sameEntropy)) != PublicKeyOf(MakeEphemeral(sameEntropy)));
    }

    void escrowRecords()
    {
        const Parts parts;
        const auto line = [](const Parts &from, const char *machine) {
            return SealRecord({machine, from.Identity(), from.Secret()}, PublicKeyOf(from.Administrator()));
        };
        const auto record = *ParseRecord(line(parts, "b\u00fcro-7"));
        const auto opened = UnsealRecord(record, parts.Administrator());
        QVERIFY(opened && opened->machine == "b\u00fcro-7" && opened->identity == parts.Identity());
        QVERIFY(AreEqual(opened->secret.View(), parts.Secret().View()));
        QVERIFY(!UnsealRecord(record, MakeAdministratorKey()));
        // Put together from two lines.
        Parts others;
        others.volume = 1;
        others.record = 2;
        const auto other = *ParseRecord(line(others, "lab-1"));
        for (std::string EscrowRecord::*member :
             {&EscrowRecord::machine, &EscrowRecord::uuid, &EscrowRecord::record, &EscrowRecord::sealed}) {
            EscrowRecord transplanted = record;
            transplanted.*member = other.*member;
            QVERIFY(!UnsealRecord(transplanted, parts.Administrator()));
        }
        for (const char *sealed : {"", "AAAA", "not base-64"}) {
            EscrowRecord broken = record;
            broken.sealed = sealed;
            QVERIFY(!UnsealRecord(broken, parts.Administrator()));
        }
        for (const char *bad : {"", "{", "[]", "{\"version\":1}", "{\"version\":2,\"machine\":\"m\"}"})
            QVERIFY(!ParseRecord(bad));
    }

    void theSecretKeyFile()
    {
        const PassphraseCost cheap{1, 8192};
        const SecretKey key = MakeAdministratorKey();
        const auto passphrase = MakeSecret("correct horse");
        const std::string file = SealSecretKey(key, passphrase, cheap);
        SecretKey opened;
        QVERIFY(OpenSecretKey(file, passphrase, &opened) == KeyFileFault::None);
        QVERIFY(AreEqual(opened.View(), key.View()));
        QVERIFY(OpenSecretKey(file, MakeSecret("correct Horse"), &opened) == KeyFileFault::WrongPassphrase);
        const auto after = [&](const char *member, const nlohmann::json &value) {
            nlohmann::json changed = nlohmann::json::parse(file);
            changed[member] = value;
            return OpenSecretKey(changed.dump(), passphrase, &opened);
        };
        // All of the file is authenticated.
        QVERIFY(after("fingerprint", "00") == KeyFileFault::WrongPassphrase);
        QVERIFY(after("passes", 2) == KeyFileFault::WrongPassphrase);
        QVERIFY(after("comment", "added") == KeyFileFault::WrongPassphrase);
        QVERIFY(after("memory", 1ull << 40) == KeyFileFault::NoKeyFile);
        QVERIFY(after("passes", -1) == KeyFileFault::NoKeyFile);
        QVERIFY(after("salt", "AAAA") == KeyFileFault::NoKeyFile);
        QVERIFY(OpenSecretKey("{}", passphrase, &opened) == KeyFileFault::NoKeyFile);
    }

    void theObjectInTheHeader()
    {
        Enrolment enrolment = Parts().Enrolment();
        enrolment.keyslots = {7, 3};
        const Bytes<16> &uuid = enrolment.identity.volume;
        const auto decoded = DecodeEnrolment(EncodeEnrolment(enrolment), uuid);
        QVERIFY(decoded && decoded->identity == enrolment.identity &&
                decoded->keyslots == enrolment.keyslots);
        QVERIFY(decoded->administrator == enrolment.administrator && !decoded->used && !decoded->pending);
        const nlohmann::json good = nlohmann::json::parse(EncodeEnrolment(enrolment));
        for (const char *member : {"type", "version", "record", "binding", "administrator"}) {
            for (const nlohmann::json &value : {nlohmann::json(7), nlohmann::json("x"), nlohmann::json()}) {
                nlohmann::json bad = good;
                bad[member] = value;
                QVERIFY2(!DecodeEnrolment(bad.dump(), uuid), member);
            }
        }
        QVERIFY(ParseUuid(FormatUuid(uuid)) == uuid);
        for (const char *bad :
             {"", "x", "40414243-4445-4647-4849-4a4b4c4d4e4", "404142434-445-4647-4849-4a4b4c4d4e4f"})
            QVERIFY(!ParseUuid(bad));
    }
};

PBA_REGISTER_TEST(RecoveryTest);

#include "tst_recovery.moc"
