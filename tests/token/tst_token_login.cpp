// SPDX-License-Identifier: Apache-2.0
// What the service does with tokens, with real ones in processes of their own.
#include <csignal>
#include <set>

#include <poll.h>

#include <QDeadlineTimer>
#include <QDirIterator>

#include "tests/host/host_on_volume.h"
#include "tests/support/test_main.h"
#include "tests/token/soft_tokens.h"
#include "volume/token/volume_tokens.h"

using namespace protocol;

namespace {

constexpr std::chrono::seconds kLong{60};

// A service whose screen has been told the list.
struct Host : ServiceOnVolume
{
    Host(const ScratchVolume &scratch, const SoftTokens &tokens, std::chrono::milliseconds timeout = kLong,
         bool passwordLogin = true)
        : Host(scratch, {PBA_TOKEN, {tokens.Module().toStdString()}, tokens.User(), timeout}, passwordLogin)
    {
    }
    Host(const ScratchVolume &scratch, host::TokenOptions options, bool passwordLogin = true)
        : ServiceOnVolume(scratch, {{}, false, passwordLogin}, nullptr, std::move(options))
        , hello(Ask(Hello{}))
        , shown(service.Tokens().Take().value_or(Tokens{}))
    {
    }

    template <typename Request>
    typename Request::Reply Ask(const Request &request)
    {
        auto reply = client->Ask(request);
        if (!reply)
            qFatal("no answer: %s", Describe(client->WhyClosed()));
        return std::move(*reply);
    }
    static QStringList NamesOf(const Tokens &tokens)
    {
        QStringList names;
        for (const TokenInfo &token : tokens.tokens)
            names.append((token.usable ? "" : "no ") + QString::fromStdString(token.name) +
                         (token.pinPad ? " at the reader" : ""));
        return names;
    }
    // What the screen shows from now on, when it is this.
    bool Shows(const QStringList &names)
    {
        service.Tokens().LookAnew();
        const QDeadlineTimer patience(kLong);
        for (;;) {
            shown = service.Tokens().Take().value_or(Tokens{});
            if (NamesOf(shown) == names)
                return true;
            pollfd notice{service.Tokens().Descriptor(), POLLIN, 0};
            if (poll(&notice, 1, static_cast<int>(patience.remainingTime())) == 0)
                return false;
        }
    }
    TokenError Login(int index, std::string_view pin = SoftTokens::kPin)
    {
        const TryTokenReply reply =
            Ask(TryToken{shown.generation, static_cast<std::uint8_t>(index), MakeSecret(pin)});
        if (reply.volumeError != VolumeError::None)
            qFatal("the volume refuses");
        return reply.tokenError;
    }
    // A token may be busy with the end of what was before.
    bool LogsInAgain(int index)
    {
        const QDeadlineTimer patience(kLong);
        while (!patience.hasExpired()) {
            if (Login(index) == TokenError::None)
                return true;
        }
        return false;
    }
    bool Starts() { return Ask(Start{}).result == StartResult::Started; }
    bool TakesPassword()
    {
        return Ask(TryPassword{"", "anna", MakeSecret(ScratchVolume::kPassword)}).result ==
               LoginResult::Opened;
    }

    HelloReply hello;
    Tokens shown;
};

// The processes that modules run in.
QStringList ModuleProcesses()
{
    QStringList processes;
    for (QDirIterator entry("/proc", QDir::Dirs); entry.hasNext();) {
        const QByteArray status = ReadFile(entry.next() + "/status");
        if (status.startsWith("Name:\tpba_token\n") &&
            status.contains("\nPPid:\t" + QByteArray::number(getpid()) + "\n"))
            processes.append(entry.filePath());
    }
    return processes;
}

} // namespace

Q_DECLARE_METATYPE(protocol::TokenError)

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

    // Locked, with another name or pulled out: what the person did is answered, and nothing starts.
    void eachFailureHasItsError_data()
    {
        QTest::addColumn<TokenError>("error");
        QTest::addColumn<QByteArray>("control");
        QTest::addColumn<QByteArray>("pin");
        QTest::addColumn<QByteArray>("logins");
        const auto row = [](const char *name, TokenError error, const QByteArray &control,
                            const QByteArray &pin, bool asked) {
            QTest::newRow(name) << error << control << pin << QByteArray(asked ? "Anna with PIN\n" : "");
        };
        row("wrong PIN", TokenError::WrongPin, "", "1111", true);
        row("few tries", TokenError::FewTriesLeft, "flag Anna 0x10000", "1111", true);
        row("last try", TokenError::LastTry, "flag Anna 0x30000", "1111", true);
        row("locked", TokenError::PinLocked, "flag Anna 0x40000", "7315", false);
        row("no PIN", TokenError::PinMissing, "", "", false);
        row("gone", TokenError::Removed, "hide Anna", "7315", false);
        row("pulled at login", TokenError::Removed, "pull-at-login Anna", "7315", true);
        row("pulled at the search", TokenError::Removed, "pull-at-find Anna", "7315", true);
        row("pulled at the end", TokenError::Removed, "pull-at-decrypt Anna", "7315", true);
        row("no answer", TokenError::Removed, "dead", "7315", false);
        row("expired", TokenError::PinExpired, "expired Anna", "7315", true);
        row("no end of slots", TokenError::Removed, "always-too-small", "7315", false);
        row("no end of keys", TokenError::NoKey, "endless Anna", "7315", true);
        row("lengths that are none", TokenError::NoKey, "boast Anna", "7315", true);
    }
    void eachFailureHasItsError()
    {
        QFETCH(QByteArray, control);
        QFETCH(QByteArray, pin);
        m_tokens.Do("hide Boris\nhide Curve");
        Enroll("Anna");
        Host host(*m_scratch, m_tokens);
        QCOMPARE(host.NamesOf(host.shown), QStringList{"Anna"});
        m_tokens.Do("hide Boris\nhide Curve\n" + control);
        m_tokens.TakeLogins();
        QTEST(host.Login(0, pin.toStdString()), "error");
        QTEST(m_tokens.TakeLogins(), "logins");
        QVERIFY(!host.Starts());
        QVERIFY(fake_pbe::LogText().contains("Login by token refused: "));
        QVERIFY(pin.isEmpty() || !fake_pbe::LogText().contains(pin));
        // None of it counts for good.
        m_tokens.Do("hide Boris\nhide Curve");
        QCOMPARE(host.Login(0), TokenError::None);
        QVERIFY(fake_pbe::LogText().contains("Login by token: the keyslot is open."));
        // Nor does a success outlive the next attempt.
        m_tokens.Do("hide Anna");
        QCOMPARE(host.Login(0), TokenError::Removed);
        QVERIFY(!host.Starts());
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
        Host host(*m_scratch, m_tokens);
        QCOMPARE(host.NamesOf(host.shown), (QStringList{"Anna", "Boris", "no Curve"}));
        QCOMPARE(host.Login(1), TokenError::NoKey);
        QCOMPARE(host.Login(2), TokenError::NotEnrolled);
        QVERIFY(!m_tokens.TakeLogins().contains("Curve"));
        QCOMPARE(host.Login(3), TokenError::Removed);
        const Tokens shown = std::exchange(host.shown, {host.shown.generation + 1, {}});
        QCOMPARE(host.Login(0), TokenError::Removed);
        QVERIFY(m_tokens.TakeLogins().isEmpty());
        QVERIFY(!host.Starts());
        host.shown = shown;
        QCOMPARE(host.Login(0), TokenError::None);
        QVERIFY(host.Starts());
        // What fits into no question is no enrolment of this token.
        for (const auto &[uri, key] : {std::pair(3000, 256), std::pair(0, 1025)}) {
            misled.uri = "pkcs11:token=Curve;object=" + std::string(static_cast<std::size_t>(uri), 'x');
            misled.key.assign(static_cast<std::size_t>(key), 'k');
            QCOMPARE(opened->WriteObject(token::EncodeEnrolment(misled), &object.number),
                     volume::Error::None);
            QCOMPARE(host.Login(2), TokenError::NoKey);
        }
        QVERIFY(host.TakesPassword());
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
        Host host(*m_scratch, m_tokens);
        const auto &tokens = host.shown.tokens;
        QVERIFY(tokens.at(0).name.starts_with("Anna") && (tokens.at(0).name == tokens.at(1).name) == alike);
        m_tokens.TakeLogins();
        m_tokens.Do(control + "hide Anna");
        const std::set errors{host.Login(0, "1111"), host.Login(1, "1111")};
        QCOMPARE(errors,
                 (std::set{alike ? TokenError::WrongPin : TokenError::NotEnrolled, TokenError::Removed}));
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
        Host host(*m_scratch, m_tokens);
        m_tokens.TakeLogins();
        QCOMPARE(host.NamesOf(host.shown), (QStringList{"Anna at the reader", "Boris", "Curve"}));
        for (const int index : {0, 1, 2})
            QCOMPARE(host.Login(index), TokenError::None);
        QCOMPARE(m_tokens.TakeLogins(),
                 "Anna at the reader\nBoris with PIN\nBoris with PIN\nCurve with PIN\n");
        QCOMPARE(host.Login(0, ""), TokenError::None);
    }

    void theListIsToldWhenItChanges()
    {
        Enroll("Anna");
        m_tokens.Do("hide Anna\nhide Boris\nhide Curve");
        Host host(*m_scratch, m_tokens);
        QVERIFY(host.shown.generation == 1 && host.shown.tokens.empty());
        const std::pair<const char *, QStringList> steps[] = {
            {"hide Anna\nhide Curve", {"no Boris"}},
            {"hide Boris\nhide Curve\nflag Anna 0x40000", {"no Anna"}},
            {"", {"Anna", "no Boris", "no Curve"}},
            {"hide Boris", {"Anna", "no Curve"}},
            {"label Anna \xff\x1b\xe2\x80\xae", {"no Boris", "no Curve", R"(no \xff\u{1b}\u{202e})"}},
            {"dead", {}},
            {"", {"Anna", "no Boris", "no Curve"}}};
        const Tokens first = host.shown;
        for (const auto &[control, names] : steps) {
            const std::uint32_t generation = host.shown.generation;
            m_tokens.Do(control);
            QVERIFY2(host.Shows(names) && host.shown.generation > generation, control);
        }
        QCOMPARE(m_tokens.TakeLogins().count("\n"), 1); // of the enrolment
        for (int i = 0; i < 3; ++i)
            QCOMPARE(host.Login(0), TokenError::None);
        QCOMPARE(host.service.Tokens().Take()->generation, host.shown.generation);
        // An older list counts as long as it is remembered.
        const Tokens newest = host.shown;
        m_tokens.Do("hide Boris");
        QVERIFY(host.Shows({"Anna", "no Curve"}));
        host.shown = newest;
        QCOMPARE(host.Login(0), TokenError::None);
        host.shown = first;
        QCOMPARE(host.Login(0), TokenError::Removed);
    }

    // Also a module that is not there offers what the volume holds.
    void theWaysFollowTheVolume()
    {
        const auto offers = [](const Host &host, bool passwords, bool tokens) {
            return host.hello.passwordsOffered == passwords && host.hello.tokensOffered == tokens;
        };
        Host without(*m_scratch, m_tokens);
        QVERIFY(offers(without, true, false) && without.shown.generation == 0);
        QVERIFY(ModuleProcesses().isEmpty());
        Enroll("Anna");
        without.hello = without.Ask(Hello{}); // without a new start
        QVERIFY(offers(without, true, true) && without.Shows({"Anna", "no Boris", "no Curve"}));
        Host tokensOnly(*m_scratch, m_tokens, kLong, false);
        QVERIFY(offers(tokensOnly, false, true) && !tokensOnly.TakesPassword() && !tokensOnly.Starts());
        Host missing(*m_scratch, {PBA_TOKEN, {"/nowhere.so"}, m_tokens.User()});
        QVERIFY(offers(missing, true, true) && missing.shown.generation == 1 && missing.shown.tokens.empty());
        QVERIFY(fake_pbe::LogText().contains("No PKCS#11 module can be loaded"));
        Host notInstalled(*m_scratch, {"/nowhere", {m_tokens.Module().toStdString()}, {}});
        QVERIFY(notInstalled.shown.tokens.empty() && notInstalled.TakesPassword());
        const auto opened = m_scratch->Open();
        const auto tokens = token::TokensOf(*opened);
        QCOMPARE(token::RemoveToken(*opened, tokens.at(0).enrolment.keyslots.at(0)), volume::Error::None);
        QVERIFY(offers(Host(*m_scratch, m_tokens), true, false));
        QVERIFY(offers(Host(*m_scratch, m_tokens, kLong, false), false, false));
    }

    // The password opens all the while, other modules' tokens stay, and the token does again when its module
    // does.
    void aModuleThatHangsOrCrashes_data()
    {
        QTest::addColumn<QByteArray>("control");
        QTest::addColumn<bool>("whileListing");
        QTest::addColumn<TokenError>("error");
        for (const QByteArray how : {"hang ", "crash "}) {
            const auto row = [&](const QByteArray &function, bool whileListing, TokenError error,
                                 const char *before = "") {
                QTest::newRow(how + function) << before + how + function << whileListing << error;
            };
            // A module that does not answer is loaded anew.
            for (const char *function : {"C_Initialize", "C_Finalize"})
                row(function, true, TokenError::Removed, "dead\n");
            for (const char *function : {"C_GetInfo", "C_GetSlotList", "C_GetSlotInfo", "C_GetTokenInfo"})
                row(function, true, TokenError::Removed);
            for (const char *function :
                 {"C_OpenSession", "C_Login", "C_FindObjectsInit", "C_FindObjects", "C_FindObjectsFinal",
                  "C_GetAttributeValue", "C_DecryptInit", "C_Decrypt", "C_DeriveKey"})
                row(function, false, TokenError::Removed);
            // Who is in is in.
            for (const char *function : {"C_Logout", "C_CloseSession"})
                row(function, false, TokenError::None);
        }
    }
    void aModuleThatHangsOrCrashes()
    {
        QFETCH(QByteArray, control);
        QFETCH(bool, whileListing);
        QFETCH(TokenError, error);
        if (!m_enrolled) {
            Enroll("Anna");
            EnrollCurve();
            m_enrolled.emplace(*m_scratch);
        }
        const QStringList all{"Anna", "Curve", "no Boris"};
        Host host(*m_enrolled, m_tokens, std::chrono::milliseconds(1000));
        QVERIFY(host.Shows(all));
        const Tokens shown = host.shown;
        const int index = control.endsWith("C_DeriveKey") ? 1 : 0;
        QVERIFY(host.LogsInAgain(index));
        m_tokens.Do(control);
        if (whileListing)
            host.service.Tokens().LookAnew();
        QVERIFY(host.TakesPassword());
        if (error == TokenError::None)
            QVERIFY(host.LogsInAgain(index) && host.Starts());
        else
            QVERIFY(host.Login(index) == error && !host.Starts());
        if (whileListing)
            QVERIFY(host.Shows({}));
        QVERIFY(host.TakesPassword());
        m_tokens.Do("");
        host.shown = shown;
        QVERIFY(host.LogsInAgain(index));
        QVERIFY(host.Shows(all));
    }

    // Whatever stands in for a module's process, and whoever ends it.
    void theProcessOfAModule()
    {
        Enroll("Anna");
        {
            const std::string good = m_tokens.Module().toStdString();
            Host host(*m_scratch, {PBA_TOKEN, {"/nowhere.so", good}, m_tokens.User()});
            QCOMPARE(host.NamesOf(host.shown), (QStringList{"Anna", "no Boris", "no Curve"}));
            QCOMPARE(ModuleProcesses().size(), 2);
            for (const QString &process : ModuleProcesses()) {
                const QByteArray status = ReadFile(process + "/status");
                QVERIFY(status.contains("\nCapEff:\t0000000000000000\n") && status.contains("\nCapBnd:\t") &&
                        status.contains("\nNoNewPrivs:\t1\n") && status.contains("\nSeccomp:\t2\n"));
                QVERIFY(geteuid() != 0 || status.contains("\nUid:\t65533\t65533\t65533\t65533\n"));
                QVERIFY(kill(QFileInfo(process).fileName().toInt(), SIGKILL) == 0);
            }
            QCOMPARE(host.Login(0), TokenError::None);
            QVERIFY(host.Shows({"Anna", "no Boris", "no Curve"}));
            // A person who does not wait for a token is not kept from the end.
            m_tokens.Do("hang C_Login");
            std::thread impatient([&] {
                while (m_tokens.TakeLogins().isEmpty() && ModuleProcesses().size() < 2)
                    usleep(1000);
                host.service.Interrupt();
            });
            QCOMPARE(host.Login(0), TokenError::Removed);
            impatient.join();
            QCOMPARE(host.Login(0), TokenError::Removed);
            m_tokens.Do("");
            host.Ask(Hello{});
            QCOMPARE(host.Login(0), TokenError::None);
        }
        QVERIFY(ModuleProcesses().isEmpty());
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
    std::optional<ScratchVolume> m_enrolled; // for tests that do not change it
};

PBA_REGISTER_TEST(TokenLoginTest);

#include "tst_token_login.moc"
