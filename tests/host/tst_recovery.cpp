// SPDX-License-Identifier: Apache-2.0
// The recovery's protocol: what both sides compute, and what neither may take.
#include <numeric>

#include <nlohmann/json.hpp>

#include "volume/recovery/administrator_key.h"
#include "volume/recovery/challenge.h"
#include "volume/recovery/escrow_record.h"
#include "volume/recovery/response.h"
#include "tests/host/scratch_volume.h"
#include "tests/support/test_main.h"

using namespace recovery;

namespace {

template <typename Container>
Container CountingUp(std::uint8_t first)
{
    Container bytes;
    std::iota(bytes.begin(), bytes.end(), first);
    return bytes;
}

template <std::size_t Size>
SecretBytes<Size> SecretCountingUp(std::uint8_t first)
{
    SecretBytes<Size> secret;
    std::iota(secret.Data(), secret.Data() + Size, first);
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
        return {CountingUp<Bytes<16>>(volume), CountingUp<Bytes<16>>(record), CountingUp<Bytes<32>>(binding)};
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

std::vector<volume::User> Users(std::initializer_list<volume::UserName> names)
{
    std::vector<volume::User> users;
    for (const volume::UserName &name : names)
        users.push_back({.name = name, .keyslots = {}});
    return users;
}

} // namespace

class RecoveryTest : public QObject
{
    Q_OBJECT

private slots:
    // The second and third come from an implementation of its own.
    void vectors()
    {
        const struct
        {
            Parts parts;
            volume::UserName typed; // the same name, in another way
            ChallengeStrings challenge;
            const char *response[kResponseLines];
        } rows[] = {{{},
                     {"Example", "ALICE"},
                     {"21X3FJY1884KS2VN", "NBQ0V23M6SD166XN", "5D2TN8AFPGQQY0P2", "AW6T73W95RNF9TDC"},
                     {"VDFPTRJFZE3F35PAM", "2R385JS0WGGKC16N8"}},
                    {{0xE0, 0x11, 0xA5, 0x00, 0xF0, 0xF8, {"", "J\u00dcRGEN Stra\u00dfe"}},
                     {"", "ju\u0308rgen STRASSE"},
                     {"2WV88QAMX1YY17BA", "BP4AAMW22RM54M0D", "AVV681T6G04VTSA0", "S9KM58S06SZ4XQ0S"},
                     {"DPZRA7ETSHFJZ6G89", "KPP3D71Y8P202KP95"}},
                    {{0x7F, 0xD3, 0xFF, 0x33, 0x01, 0x5A, {"\u0416\u041a\u0425", "\u0130van"}},
                     {"\u0436\u043a\u0445", "i\u0307VAN"},
                     {"237V2B87BQ2ZF423", "P0RDC093Y4WDV27T", "G2PHA1CV85B7JVEG", "W6AC99ECYWH6AE2R"},
                     {"TQ0RHCF4RZ62JRDAM", "GJ17WD4P3MH0V1S9A"}}};
        for (const auto &[parts, typed, challenge, response] : rows) {
            QVERIFY2(EncodeChallenge(parts.Challenge()) == challenge, typed.user.c_str());
            const auto decoded = DecodeChallenge(challenge);
            QVERIFY(decoded && BelongsTo(*decoded, parts.Identity()));
            QVERIFY(decoded->ephemeral == PublicKeyOf(parts.Ephemeral()));
            const ResponseLines lines = parts.Response();
            for (std::size_t i = 0; i < lines.size(); ++i)
                QVERIFY2(lines[i].View() == response[i], response[i]);
            const auto opened = Response::Open(parts.Ephemeral(), parts.Enrolment(), lines);
            QVERIFY(opened && AreEqual(opened->Secret().View(), parts.Secret().View()));
            QVERIFY(opened->FindUser(Users({{"", "other"}, typed})) == typed);
        }
        const Bytes<32> sameEntropy{};
        QVERIFY(PublicKeyOf(MakeEphemeral(sameEntropy)) != PublicKeyOf(MakeEphemeral(sameEntropy)));
    }

    // Each string tells a wrong digit, two that changed places, and another string's place.
    void aMisheardStringIsRefused()
    {
        const ChallengeStrings challenge = EncodeChallenge(Parts().Challenge());
        const ResponseLines response = Parts().Response();
        const auto check = [](std::string_view right, auto passes, std::size_t row, std::size_t rows) {
            for (std::size_t other = 0; other < rows; ++other)
                QCOMPARE(passes(right, other), other == row);
            for (std::size_t i = 0; i + 1 < right.size(); ++i) {
                std::string digit(right), places(right);
                digit[i] = right[i] == 'Z' ? 'Y' : 'Z';
                std::swap(places[i], places[i + 1]);
                QVERIFY2(!passes(digit, row) && (places == right || !passes(places, row)), digit.c_str());
            }
        };
        for (std::size_t row = 0; row < challenge.size(); ++row)
            check(challenge[row], IsChallengeString, row, challenge.size());
        for (std::size_t row = 0; row < response.size(); ++row)
            check(response[row].View(), IsResponseLine, row, response.size());
        QVERIFY(!IsChallengeString(challenge[0].substr(1), 0) && !IsChallengeString("", 0));
    }

    void whatPeopleWriteInstead()
    {
        const auto normalised = [](std::string_view text) {
            const std::optional<base::Secret> code = base::NormaliseCode(text);
            return code ? QByteArray(code->Data(), static_cast<int>(code->Size())) : QByteArray("refused");
        };
        QCOMPARE(normalised(" 2ixl-oO0z\t"), "21X1000Z");
        for (const char *bad : {"2u", "2U", "\u00e4", "2.", "2\n"})
            QCOMPARE(normalised(bad), "refused");
        QCOMPARE(normalised(std::string(1000, '0')), "refused");
    }

    // One thing at the computer is not what the response was made for.
    void aResponseForSomethingElse()
    {
        for (std::uint8_t Parts::*part :
             {&Parts::ephemeral, &Parts::administrator, &Parts::volume, &Parts::record}) {
            Parts other;
            other.*part += 9;
            const auto opened = Response::Open(other.Ephemeral(), other.Enrolment(), Parts().Response());
            QVERIFY(opened && !AreEqual(opened->Secret().View(), Parts().Secret().View()));
            QVERIFY(!opened->FindUser(Users({{"example", "alice"}})));
        }
        for (std::uint8_t Parts::*part : {&Parts::volume, &Parts::record, &Parts::binding}) {
            Parts other; // the desk sees it, too
            other.*part += 9;
            QVERIFY(!BelongsTo(Parts().Challenge(), other.Identity()));
        }
    }

    void whomAResponseNames()
    {
        const auto twins = Users({{"A", "alice"}, {"B", "Alice"}});
        const auto unique = Users({{"A", "alice"}, {"A", "al"}});
        const auto domainOf = [](const std::vector<volume::User> &users, const char *domain) {
            Parts parts;
            parts.name.domain = domain;
            const auto name =
                Response::Open(parts.Ephemeral(), parts.Enrolment(), parts.Response())->FindUser(users);
            return name ? QByteArray::fromStdString(name->domain) : "none";
        };
        QCOMPARE(domainOf(twins, "B"), "B");
        QCOMPARE(domainOf(twins, ""), "none");
        QCOMPARE(domainOf(twins, "C"), "none");
        QCOMPARE(domainOf(unique, ""), "A");
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

    void escrowRecords()
    {
        const Parts parts;
        const auto sealed = [](const Parts &from, const char *machine) {
            return *ParseRecord(
                SealRecord({machine, from.Identity(), from.Secret()}, PublicKeyOf(from.Administrator())));
        };
        const EscrowRecord record = sealed(parts, "b\u00fcro-7");
        const auto opened = UnsealRecord(record, parts.Administrator());
        QVERIFY(opened && opened->machine == "b\u00fcro-7" && opened->identity == parts.Identity());
        QVERIFY(AreEqual(opened->secret.View(), parts.Secret().View()));
        QVERIFY(!UnsealRecord(record, MakeAdministratorKey()));
        // Put together from two lines, or of rubbish.
        const auto opensWith = [&](std::string EscrowRecord::*member, const std::string &text) {
            EscrowRecord altered = record;
            altered.*member = text;
            return UnsealRecord(altered, parts.Administrator()).has_value();
        };
        const EscrowRecord other = sealed({.volume = 1, .record = 2, .name = {}}, "lab-1");
        for (const auto member :
             {&EscrowRecord::machine, &EscrowRecord::uuid, &EscrowRecord::record, &EscrowRecord::sealed})
            QVERIFY(opensWith(member, record.*member) && !opensWith(member, other.*member));
        for (const char *rubbish : {"", "AAAA", "not base-64"})
            QVERIFY(!opensWith(&EscrowRecord::sealed, rubbish) && !ParseRecord(rubbish));
    }

    void theSecretKeyFile()
    {
        const SecretKey key = MakeAdministratorKey();
        const auto passphrase = MakeSecret("correct horse");
        const std::string file = SealSecretKey(key, passphrase, {1, 8192});
        SecretKey opened;
        QVERIFY(OpenSecretKey(file, passphrase, &opened) == KeyFileFault::None);
        QVERIFY(AreEqual(opened.View(), key.View()));
        QVERIFY(OpenSecretKey(file, MakeSecret("correct Horse"), &opened) == KeyFileFault::WrongPassphrase);
        // All of the file is authenticated.
        const std::tuple<const char *, nlohmann::json, KeyFileFault> rows[] = {
            {"fingerprint", "00", KeyFileFault::WrongPassphrase},
            {"comment", "added", KeyFileFault::WrongPassphrase},
            {"memory", 0xFFFFFFFF, KeyFileFault::NoKeyFile},
            {"passes", -1, KeyFileFault::NoKeyFile},
            {"salt", "AAAA", KeyFileFault::NoKeyFile}};
        for (const auto &[member, value, fault] : rows) {
            nlohmann::json changed = nlohmann::json::parse(file);
            changed[member] = value;
            QVERIFY2(OpenSecretKey(changed.dump(), passphrase, &opened) == fault, member);
        }
    }
};

PBA_REGISTER_TEST(RecoveryTest);

#include "tst_recovery.moc"
