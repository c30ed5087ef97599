// The host's answers about tokens, with real ones and a view that records.
#include "business_logic.h"
#include "fake_pbe.h"
#include "scratch_volume.h"
#include "silent_view.h"
#include "soft_tokens.h"
#include "test_main.h"
#include "token/volume_tokens.h"

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
    kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &text, std::uint32_t,
                              std::uint32_t) override
    {
        calls.append(QString::fromUtf16(title.Data()) + ": " + QString::fromUtf16(text.Data()));
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

// A host whose token page is shown. An enrolment that is in memory only does not count, so it opens the file.
struct Host
{
    explicit Host(const ScratchVolume &scratch, host::LogicOptions options = {true, false, TOKEN_PROXY})
        : volume(scratch.Open())
        , osStart(*volume, {})
        , logic(osStart, throttle, texts, options)
    {
        fake_pbe::Reset();
        if (logic.Init(&view) != kro::kOk || logic.StartLoginByToken(&view) != kro::kOk)
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

    std::unique_ptr<volume::Volume> volume;
    host::HeaderStateStore memory{*volume};
    host::LoginThrottle throttle{memory, volume->GetPolicy()};
    host::Texts texts{nullptr};
    host::OsStart osStart;
    TokenView view;
    host::BusinessLogic logic;
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
        const QByteArray asked = "Anna with PIN\n";
        QTest::newRow("The PIN is wrong. Please") << QByteArray() << QByteArray("1111") << asked;
        QTest::newRow("few tries") << QByteArray("flag Anna 0x10000") << QByteArray("1111") << asked;
        QTest::newRow("one more wrong PIN") << QByteArray("flag Anna 0x30000") << QByteArray("1111") << asked;
        QTest::newRow("locked itself")
            << QByteArray("flag Anna 0x40000") << QByteArray("7315") << QByteArray();
        QTest::newRow("Please enter the PIN") << QByteArray() << QByteArray() << QByteArray();
        QTest::newRow("removed or") << QByteArray("hide Anna") << QByteArray("7315") << QByteArray();
        QTest::newRow("removed or ") << QByteArray("pull-at-login Anna") << QByteArray("7315") << asked;
        QTest::newRow("removed or   ") << QByteArray("pull-at-find Anna") << QByteArray("7315") << asked;
        QTest::newRow("removed or  ") << QByteArray("pull-at-decrypt Anna") << QByteArray("7315") << asked;
        QTest::newRow("does not answer") << QByteArray("dead") << QByteArray("7315") << QByteArray();
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
        m_tokens.Do("");
        Enroll("Anna");
        Misdirect("Boris");
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
    void thePinGoesToTheTokenThatWasShownOrToNone()
    {
        Enroll("Anna");
        Enroll("Boris");
        m_tokens.Do("hide Curve\nlabel Boris Anna");
        // The enrolment names its token by what it was called then.
        Host host(*m_scratch);
        QVERIFY(host.Names()[0].startsWith("Anna (") && host.Names()[0] != host.Names()[1]);
        m_tokens.TakeLogins();
        m_tokens.Do("hide Curve\nlabel Boris Anna\nhide Anna");
        QCOMPARE(host.Login(0, SoftTokens::kPin), kro::kOk);
        QVERIFY(host.view.calls.last().contains("was removed"));
        QCOMPARE(m_tokens.TakeLogins(), QByteArray());
    }

    // Nor do two that tell nothing of themselves stand in for each other.
    void tokensThatCannotBeToldApart()
    {
        m_tokens.Do("hide Curve\nlabel Boris Anna\nblank Anna\nblank Boris\nhide Boris");
        Enroll("Anna");
        m_tokens.Do("hide Curve\nlabel Boris Anna\nblank Anna\nblank Boris");
        Host host(*m_scratch);
        QCOMPARE(host.Names(), (QStringList{"Anna", "Anna"}));
        m_tokens.TakeLogins();
        m_tokens.Do("hide Curve\nlabel Boris Anna\nblank Anna\nblank Boris\nhide Anna");
        for (const int index : {0, 1})
            QCOMPARE(host.Login(index, "1111"), kro::kOk);
        QCOMPARE(host.view.calls.filter("was removed").size(), 1);
        QCOMPARE(m_tokens.TakeLogins(), "Boris with PIN\n");
    }

    void aReaderWithPinPad()
    {
        m_tokens.Do("pad Anna 7315\nhide Boris\nhide Curve");
        Enroll("Anna");
        Host host(*m_scratch);
        m_tokens.TakeLogins();
        QCOMPARE(host.Names(), QStringList{"Anna (PIN at the reader)"});
        for (const char *pin : {"", "typed nevertheless"}) {
            QCOMPARE(host.Login(0, pin), kro::kOk);
            QCOMPARE(host.view.calls.last(), "LoggedIn");
            QCOMPARE(m_tokens.TakeLogins(), "Anna at the reader\n");
        }
    }

    void anEnrolmentOfTheStandardTool()
    {
        m_tokens.EnrollByStandardTool("Boris", QString::fromStdString(m_scratch->Path()),
                                      ScratchVolume::kPassword);
        Host host(*m_scratch);
        QCOMPARE(host.Names()[0], "Boris");
        QCOMPARE(host.Login(0, SoftTokens::kPin), kro::kOk);
        QCOMPARE(host.view.calls, QStringList{"LoggedIn"});
    }

    // As newer versions of the standard tool enrol: the point of a fresh key, and the secret that it shares
    // with the token's.
    void anEllipticCurveKey()
    {
        QTemporaryDir directory;
        const auto shell = [&](const char *command) {
            const Outcome outcome = Run("/bin/sh", {"-ec", command}, {}, directory.path());
            if (outcome.exitCode != 0)
                qFatal("%s: %s", command, outcome.errors.data());
            return outcome.output;
        };
        const QByteArray point =
            shell("pkcs11-tool --module /usr/lib/softhsm/libsofthsm2.so --token-label Curve --read-object "
                  "--type cert "
                  "--id 01 -o cert 2>&1 >/dev/null && openssl x509 -inform DER -in cert -pubkey -noout "
                  ">token.pem && "
                  "openssl ecparam -name prime256v1 -genkey -noout -out own.pem && "
                  "openssl ec -in own.pem -pubout -outform DER 2>/dev/null | tail -c 65");
        const QByteArray shared = shell("openssl pkeyutl -derive -inkey own.pem -peerkey token.pem");
        int keyslot = -1;
        const auto opened = m_scratch->Open();
        volume::Secret volumeKey;
        QCOMPARE(opened->Authorise(MakeSecret(ScratchVolume::kPassword), &volumeKey), volume::Error::None);
        QCOMPARE(opened->AddKeyslot(volumeKey, MakeSecret(shared.toBase64().toStdString()),
                                    volume::KeyCost::ForRandomSecret(), &keyslot),
                 volume::Error::None);
        int object = -1;
        QCOMPARE(opened->WriteObject(
                     token::EncodeEnrolment({"pkcs11:token=Curve", point.toStdString(), {keyslot}}), &object),
                 volume::Error::None);
        Host host(*m_scratch);
        QCOMPARE(host.Names()[0], "Curve");
        QCOMPARE(host.Login(0, SoftTokens::kPin), kro::kOk);
        QCOMPARE(host.view.calls, QStringList{"LoggedIn"});
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
        QCOMPARE(Host(*m_scratch, {false, false, TOKEN_PROXY}).view.options, pba::kOptionLoginByToken);
        Host without(*m_scratch, {true, false, "/nowhere.so"});
        QCOMPARE(without.view.options, both);
        QVERIFY(!without.IsConnected());
        const auto opened = m_scratch->Open();
        const auto tokens = token::TokensOf(*opened);
        QCOMPARE(token::RemoveToken(*opened, tokens.at(0).enrolment.keyslots.at(0)), volume::Error::None);
        QCOMPARE(Host(*m_scratch).view.options, pba::kOptionLoginByPassword);
        QCOMPARE(Host(*m_scratch, {false, false, TOKEN_PROXY}).view.options, 0u);
    }

private:
    void Enroll(const QString &label) const
    {
        const Outcome outcome = Run(PBA_ADMIN,
                                    {"token", "add", "--volume", QString::fromStdString(m_scratch->Path()),
                                     "--token", "pkcs11:token=" + label, "--user", "anna", "--pkcs11-module",
                                     TOKEN_PROXY, "--password-stdin"},
                                    QByteArray(ScratchVolume::kPassword) + "\n" + SoftTokens::kPin + "\n");
        if (outcome.exitCode != 0)
            qFatal("%s", outcome.errors.data());
    }
    // What the token's key brings back, but for a keyslot that something else opens.
    void Misdirect(const char *label) const
    {
        Enroll(label);
        const auto opened = m_scratch->Open();
        token::Enrolment enrolment = token::TokensOf(*opened).back().enrolment;
        QCOMPARE(token::RemoveToken(*opened, enrolment.keyslots[0]), volume::Error::None);
        enrolment.keyslots = {0};
        int object = -1;
        QCOMPARE(opened->WriteObject(token::EncodeEnrolment(enrolment), &object), volume::Error::None);
    }

    SoftTokens m_tokens;
    std::optional<ScratchVolume> m_scratch;
};

PBA_REGISTER_TEST(TokenLoginTest);

#include "tst_token_login.moc"
