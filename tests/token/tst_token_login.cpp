// SPDX-License-Identifier: Apache-2.0
// The host's answers about tokens, with real ones and a view that records.
#include "tests/host/host_on_volume.h"
#include "tests/token/soft_tokens.h"
#include "tests/support/test_main.h"
#include "volume/token/volume_tokens.h"

namespace {

class TokenView final : public SilentView, public pba::ILoginByTokenView
{
public:
    std::uint32_t options = 0;
    QStringList calls;
    pba::ILoginByTokenLogic *tokenLogic = nullptr;
    std::function<void()> duringMessage = [] {};

    kro::result_t SetOptions(std::uint32_t newOptions) override
    {
        options = newOptions;
        return kro::kOk;
    }
    kro::result_t ShowMessage(const kro::wstring_t &, const kro::wstring_t &text, std::uint32_t,
                              std::uint32_t) override
    {
        calls.append(QString::fromUtf16(text.Data()));
        duringMessage();
        return kro::kOk;
    }
    pba::IMainView *GetMainView() override { return this; }
    using SilentView::SetLogic;
    void SetLogic(pba::ILoginByTokenLogic *logic) override { tokenLogic = logic; }
    kro::result_t ShowLoggedIn() override
    {
        calls.append("LoggedIn");
        return kro::kOk;
    }
};

// Whose token page is shown.
struct Host : HostOnVolume<TokenView>
{
    explicit Host(const ScratchVolume &scratch, bool passwordLogin = true, const char *module = TOKEN_PROXY)
        : HostOnVolume(scratch, {{}, false, passwordLogin}, {false, module})
    {
        if (logic.StartLoginByToken(&view) != kro::kOk)
            qFatal("no start");
    }
    QStringList Names()
    {
        kro::vector_t<pba::TokenRecord> tokens;
        QStringList names;
        if (view.tokenLogic->GetTokens(&tokens) != kro::kOk)
            qFatal("no list");
        for (const pba::TokenRecord &token : tokens)
            names.append(token.name.Data());
        return names;
    }
    bool ScreenMustChange()
    {
        bool change = false;
        return logic.UpdateConnectedTokens(&change) == kro::kOk && change;
    }
    bool IsConnected()
    {
        bool connected = false;
        return logic.CheckTokensConnected(&connected) == kro::kOk && connected;
    }
    kro::result_t Login(int index, const char *pin) { return view.tokenLogic->LoginByToken(index, pin); }
};

} // namespace

class TokenLoginTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_tokens.Do("");
        m_tokens.TakeLogins();
        m_scratch.emplace();
    }

    // Locked, with another name or pulled out: what the person did is answered in words, and nothing starts.
    void eachFailureHasItsMessage_data()
    {
        QTest::addColumn<QByteArray>("control");
        QTest::addColumn<QByteArray>("pin");
        QTest::addColumn<QByteArray>("logins");
        const auto row = [](const char *says, const QByteArray &control, const QByteArray &pin, bool asked) {
            QTest::newRow(says) << control << pin << QByteArray(asked ? "Anna with PIN\n" : "");
        };
        row("The PIN is wrong. Please", "", "1111", true);
        row("few tries", "flag Anna 0x10000", "1111", true);
        row("one more wrong PIN", "flag Anna 0x30000", "1111", true);
        row("locked itself", "flag Anna 0x40000", "7315", false);
        row("Please enter the PIN", "", "", false);
        row("removed or", "hide Anna", "7315", false);
        row("removed or ", "pull-at-login Anna", "7315", true);
        row("removed or  ", "pull-at-find Anna", "7315", true);
        row("removed or   ", "pull-at-decrypt Anna", "7315", true);
        row("does not answer", "dead", "7315", false);
        row("wants a new PIN", "expired Anna", "7315", true);
        row("does not answer ", "always-too-small", "7315", false);
        row("no longer has the key", "endless Anna", "7315", true);
        row("no longer has the key ", "boast Anna", "7315", true);
    }
    void eachFailureHasItsMessage()
    {
        QFETCH(QByteArray, control);
        QFETCH(QByteArray, pin);
        m_tokens.Do("hide Boris\nhide Curve");
        Enroll("Anna");
        Host host(*m_scratch);
        QCOMPARE(host.Names(), QStringList{"Anna"});
        m_tokens.Do("hide Boris\nhide Curve\n" + control);
        m_tokens.TakeLogins();
        QCOMPARE(host.Login(0, pin), kro::kOk);
        QCOMPARE(host.view.calls.size(), 1);
        QVERIFY2(host.view.calls[0].contains(QByteArray(QTest::currentDataTag()).trimmed()),
                 qPrintable(host.view.calls[0]));
        QTEST(m_tokens.TakeLogins(), "logins");
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        QVERIFY(pin.isEmpty() || !fake_pbe::LogText().contains(pin));
        // None of it counts for good.
        m_tokens.Do("hide Boris\nhide Curve");
        QCOMPARE(host.Login(0, SoftTokens::kPin), kro::kOk);
        QCOMPARE(host.view.calls.last(), "LoggedIn");
        // Nor does a success outlive the next attempt.
        m_tokens.Do("hide Anna");
        QCOMPARE(host.Login(0, SoftTokens::kPin), kro::kOk);
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
    }

    void tokensThatDoNotFit()
    {
        Enroll("Anna");
        Enroll("Boris");
        // What Boris's key brings back is for a keyslot that something else opens.
        const auto opened = m_scratch->Open();
        volume::Object object = opened->Objects(token::kEnrolmentType).at(1);
        token::Enrolment misled = *token::DecodeEnrolment(object);
        misled.keyslots = {0};
        QCOMPARE(opened->WriteObject(token::EncodeEnrolment(misled), &object.number), volume::Error::None);
        Host host(*m_scratch);
        QCOMPARE(host.Names(), (QStringList{"Anna", "Boris", "Curve"}));
        QCOMPARE(host.Login(1, SoftTokens::kPin), kro::kOk);
        QCOMPARE(host.Login(2, SoftTokens::kPin), kro::kOk);
        QVERIFY(host.view.calls[0].contains("no longer has the key"));
        QVERIFY(host.view.calls[1].contains("not registered"));
        QVERIFY(!m_tokens.TakeLogins().contains("Curve"));
        for (const int index : {-1, 3})
            QCOMPARE(host.Login(index, SoftTokens::kPin), kro::kInvalidArgument);
        kro::result_t nested = kro::kOk;
        host.view.duringMessage = [&] { nested = host.Login(0, SoftTokens::kPin); };
        QCOMPARE(host.Login(0, "1111"), kro::kOk);
        QCOMPARE(nested, kro::kInvalidState);
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        QCOMPARE(host.Login(0, SoftTokens::kPin), kro::kOk);
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kOk);
    }

    // Two tokens of one name: the first leaves, and the second moves up to its place.
    void thePinGoesToTheTokenThatWasShownOrToNone_data()
    {
        QTest::addColumn<QByteArray>("control");
        QTest::addColumn<bool>("alike");
        QTest::addColumn<QByteArray>("logins");
        const QByteArray renamed = "hide Curve\nlabel Boris Anna\n";
        QTest::newRow("told apart by serial") << renamed << false << QByteArray();
        QTest::newRow("without one") << renamed + "blank Anna\nblank Boris\n"
                                     << true << QByteArray("Boris with PIN\n");
    }
    void thePinGoesToTheTokenThatWasShownOrToNone()
    {
        QFETCH(QByteArray, control);
        QFETCH(bool, alike);
        m_tokens.Do(control + "hide Boris");
        Enroll("Anna");
        m_tokens.Do(control);
        Host host(*m_scratch);
        const QStringList names = host.Names();
        QVERIFY(names[0].startsWith("Anna") && (names[0] == names[1]) == alike);
        m_tokens.TakeLogins();
        m_tokens.Do(control + "hide Anna");
        for (const int index : {0, 1})
            QCOMPARE(host.Login(index, "1111"), kro::kOk);
        QCOMPARE(host.view.calls.filter("was removed").size(), 1);
        QTEST(m_tokens.TakeLogins(), "logins");
    }

    // One with a PIN pad, one that the standard tool enrolled and that wants the PIN for each use, and one
    // with an elliptic curve.
    void everyKindOfTokenLogsOn()
    {
        m_tokens.Do("pad Anna 7315");
        Enroll("Anna");
        m_tokens.EnrollByStandardTool("Boris", QString::fromStdString(m_scratch->Path()),
                                      ScratchVolume::kPassword);
        EnrollCurve();
        Host host(*m_scratch);
        m_tokens.TakeLogins();
        QCOMPARE(host.Names(), (QStringList{"Anna (PIN at the reader)", "Boris", "Curve"}));
        for (const int index : {0, 1, 2})
            QCOMPARE(host.Login(index, SoftTokens::kPin), kro::kOk);
        QCOMPARE(m_tokens.TakeLogins(),
                 "Anna at the reader\nBoris with PIN\nBoris with PIN\nCurve with PIN\n");
        QCOMPARE(host.Login(0, ""), kro::kOk);
        QCOMPARE(host.view.calls, QStringList(4, "LoggedIn"));
    }

    // A half-typed PIN or password survives whatever leaves the screen as it is.
    void theScreenChangesWithTheListOnly()
    {
        Enroll("Anna");
        m_tokens.Do("hide Anna\nhide Boris\nhide Curve");
        Host host(*m_scratch);
        QVERIFY(!host.IsConnected());
        m_tokens.Do("hide Anna\nhide Curve"); // one that the volume does not know
        QVERIFY(!host.ScreenMustChange() && !host.IsConnected());
        m_tokens.Do("hide Boris\nhide Curve\nflag Anna 0x40000"); // one that has locked itself
        QVERIFY(!host.ScreenMustChange() && !host.IsConnected());
        m_tokens.Do("");
        QVERIFY(host.ScreenMustChange() && host.IsConnected());
        QCOMPARE(host.Names(), (QStringList{"Anna", "Boris", "Curve"}));
        QVERIFY(!host.ScreenMustChange() && !host.ScreenMustChange());
        m_tokens.Do("hide Boris");
        QVERIFY(host.ScreenMustChange());
        m_tokens.Do("");
        QVERIFY(!host.ScreenMustChange());
        m_tokens.Do("dead");
        QVERIFY(host.ScreenMustChange() && !host.IsConnected());
        QCOMPARE(host.Names(), QStringList());
        m_tokens.Do("");
        QVERIFY(host.ScreenMustChange() && host.IsConnected());
        m_tokens.Do("hide Anna"); // after the screen was chosen, before its list was asked for
        QCOMPARE(host.Names(), QStringList());
        QVERIFY(host.ScreenMustChange() && !host.IsConnected() && !host.ScreenMustChange());
        QCOMPARE(host.view.calls, QStringList());
        QCOMPARE(m_tokens.TakeLogins().count("\n"), 1); // of the enrolment
    }

    // Also a module that is not there offers what the volume holds.
    void theOptionsFollowTheVolume()
    {
        QCOMPARE(Host(*m_scratch).view.options, pba::kOptionLoginByPassword);
        Enroll("Anna");
        const std::uint32_t both = pba::kOptionLoginByPassword | pba::kOptionLoginByToken;
        QCOMPARE(Host(*m_scratch).view.options, both);
        Host tokensOnly(*m_scratch, false);
        QCOMPARE(tokensOnly.view.options, pba::kOptionLoginByToken);
        QCOMPARE(tokensOnly.view.logic->Login(u"", u"anna", u"r\u00e4tsel 42"), kro::kProhibited);
        QCOMPARE(tokensOnly.logic.StartOperatingSystem(), kro::kProhibited);
        Host without(*m_scratch, true, "/nowhere.so");
        QCOMPARE(without.view.options, both);
        QVERIFY(!without.IsConnected());
        const auto opened = m_scratch->Open();
        const auto tokens = token::TokensOf(*opened);
        QCOMPARE(token::RemoveToken(*opened, tokens.at(0).enrolment.keyslots.at(0)), volume::Error::None);
        QCOMPARE(Host(*m_scratch).view.options, pba::kOptionLoginByPassword);
        QCOMPARE(Host(*m_scratch, false).view.options, 0u);
    }

private:
    void Enroll(const QString &label) const
    {
        const QStringList options{"--token", "pkcs11:token=" + label, "--user", "anna"};
        QCOMPARE(SoftTokens::Admin("add", *m_scratch, options, SoftTokens::kAuthorised).errors, QByteArray());
    }
    // As newer versions of the standard tool do: the point of a fresh key, and the secret that it shares with
    // the token's.
    void EnrollCurve() const
    {
        const QTemporaryDir directory;
        const auto shell = [&](const char *command) {
            const Outcome outcome = Run("/bin/sh", {"-ec", command}, {}, directory.path());
            if (outcome.exitCode != 0)
                qFatal("%s: %s", command, outcome.errors.data());
            return outcome.output;
        };
        const QByteArray point = shell(R"(
            pkcs11-tool --module /usr/lib/softhsm/libsofthsm2.so --token-label Curve --read-object --type cert \
                --id 01 -o cert >&2
            openssl x509 -inform DER -in cert -pubkey -noout >token.pem
            openssl ecparam -name prime256v1 -genkey -noout -out own.pem
            openssl ec -in own.pem -pubout -outform DER | tail -c 65)");
        const QByteArray shared = shell("openssl pkeyutl -derive -inkey own.pem -peerkey token.pem");
        const auto opened = m_scratch->Open();
        base::Secret volumeKey;
        QCOMPARE(opened->Authorise(MakeSecret(ScratchVolume::kPassword), &volumeKey), volume::Error::None);
        const token::Wrapped wrapped{MakeSecret(shared.toBase64().toStdString()),
                                     {"pkcs11:token=Curve", point.toStdString(), {}}};
        int keyslot = -1;
        QCOMPARE(token::AddToken(*opened, volumeKey, wrapped, {"", "anna"}, &keyslot), volume::Error::None);
    }
    SoftTokens m_tokens;
    std::optional<ScratchVolume> m_scratch;
};

PBA_REGISTER_TEST(TokenLoginTest);

#include "tst_token_login.moc"
