// SPDX-License-Identifier: Apache-2.0
// Tokens as an administrator enrols them, here and with the standard tool.
#include "tests/host/scratch_volume.h"
#include "tests/support/json_report.h"
#include "tests/token/soft_tokens.h"
#include "tests/support/test_main.h"
#include "volume/luks/users.h"

class TokenCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_tokens.Do(""); }

    // A new user without a password, whose token the standard tool takes, too; and everything goes again.
    void addListAndRemove()
    {
        const QStringList user{"--user", "J\u00fcrgen", "--domain", "OFFICE"};
        const Outcome added = Admin("add", m_anna + user, kAuthorised);
        QVERIFY2(added.exitCode == 0 && added.output.isEmpty() && added.errors.isEmpty(), added.errors);
        const QJsonObject token = List()[0].toObject();
        QVERIFY(token["user"] == "J\u00fcrgen" && token["domain"] == "OFFICE" && token["connected"] == true);
        QVERIFY(token["uri"].toString().contains(";id=%01"));
        const Outcome all = Run(PBA_ADMIN, {"token", "list", "--pkcs11-module", TOKEN_PROXY, "--json"});
        QCOMPARE(ReadReport(all.output)[0]["state"].toString(), "ready");
        const QStringList open{"open",         "--test-passphrase", "--token-only",
                               "--token-type", "systemd-pkcs11",    Volume()};
        QCOMPARE(RunStandardTool(open, QByteArray(SoftTokens::kPin) + "\n").exitCode, 0);
        QVERIFY(RunStandardTool(open, "1111\n").exitCode != 0);

        CompareFailure(Admin("add", m_anna + user, kAuthorised), 1, "enrolled already, for keyslot 2");
        CompareFailure(Admin("remove", {"--keyslot", "0"}), 1, "keyslot 0 is no token's");
        QCOMPARE(volume::UsersOf(*m_scratch.Open()).size(), 3u);
        QCOMPARE(Admin("remove", {"--keyslot", "2"}).errors, QByteArray());
        QCOMPARE(List(), QJsonArray());
        QCOMPARE(volume::UsersOf(*m_scratch.Open()).size(), 2u);
        QCOMPARE(m_scratch.Open()->Objects().size(), 2u);
    }

    void anEnrolmentOfTheStandardTool()
    {
        m_tokens.EnrollByStandardTool("Anna", Volume(), ScratchVolume::kPassword);
        const QJsonObject token = List()[0].toObject();
        QVERIFY(token["user"].toString().isEmpty() && token["connected"].toBool());
        CompareFailure(Admin("add", m_anna + QStringList{"--user", "anna"}, kAuthorised), 1,
                       "enrolled already");
        QCOMPARE(Admin("remove", {"--keyslot", QString::number(token["keyslots"][0].toInt())}).exitCode, 0);
        QCOMPARE(List(), QJsonArray());
    }

    void refusals()
    {
        const QByteArray password = QByteArray(ScratchVolume::kPassword) + "\n";
        const std::tuple<const char *, QString, QString, QByteArray, int> rows[] = {
            {"not a PKCS#11 URI", "Anna", "anna", kAuthorised, 2},
            {"leave the PIN out", "pkcs11:token=Anna?pin-value=7315", "anna", kAuthorised, 2},
            {"name is empty", "pkcs11:token=Anna", "", kAuthorised, 2},
            {"no connected token", "pkcs11:token=Nobody", "anna", kAuthorised, 1},
            {"means several", "pkcs11:", "anna", kAuthorised, 1},
            {"wrong password", "pkcs11:token=Boris", "anna", "no\n7315\n", 1},
            {"wrong PIN", "pkcs11:token=Boris", "anna", password + "1111\n", 1},
            {"no key that fits", "pkcs11:token=Curve", "anna", kAuthorised, 1},
            {"no key that fits", "pkcs11:token=Boris;id=%02", "anna", kAuthorised, 1},
            {"input ended", "pkcs11:token=Boris", "anna", password, 1}};
        for (const auto &[says, uri, user, input, exitCode] : rows) {
            CompareFailure(Admin("add", {"--token", uri, "--user", user}, input), exitCode, says);
            QVERIFY2(m_scratch.Open()->Keyslots().size() == 2 && m_scratch.Open()->Objects().size() == 2,
                     says);
        }
    }

    // The last one: the volume keeps one user.
    void aUserGoesWithTheToken()
    {
        QCOMPARE(
            Admin("add", m_anna + QStringList{"--user", "boris", "--domain", "OFFICE"}, kAuthorised).exitCode,
            0);
        const QStringList remove{"user",     "remove", "--volume", Volume(),
                                 "--domain", "OFFICE", "boris",    "--password-stdin"};
        QCOMPARE(Run(PBA_ADMIN, remove, QByteArray(ScratchVolume::kPassword) + "\n").errors, QByteArray());
        QCOMPARE(List(), QJsonArray());
        QCOMPARE(m_scratch.Open()->Keyslots().size(), 1u);
        QCOMPARE(m_scratch.Open()->Objects().size(), 1u);
    }

private:
    Outcome Admin(const QString &command, const QStringList &arguments, const QByteArray &input = {}) const
    {
        return SoftTokens::Admin(command, m_scratch, arguments, input);
    }
    QJsonArray List() const { return ReadReport(Admin("list", {"--json"}).output).array(); }
    QString Volume() const { return QString::fromStdString(m_scratch.Path()); }

    const QByteArray kAuthorised = SoftTokens::kAuthorised;
    const QStringList m_anna{"--token", "pkcs11:token=Anna"};
    SoftTokens m_tokens;
    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(TokenCommandsTest);

#include "tst_token_commands.moc"
