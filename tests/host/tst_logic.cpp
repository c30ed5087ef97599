// The host's answers to the view, on a real volume and with a view that records.
#include "business_logic.h"
#include "fake_pbe.h"
#include "recording_view.h"
#include "scratch_volume.h"
#include "test_main.h"

using Calls = QList<QByteArray>;

namespace {

// A host around the volume; members in the order in which they depend on each other.
struct Host
{
    explicit Host(const ScratchVolume &scratch, host::StartOptions start = {},
                  host::LogicOptions options = {}, pba::ITranslator *translator = nullptr)
        : opened(scratch.Open())
        , texts(translator)
        , osStart(*opened, std::move(start))
        , logic(osStart, texts, options)
    {
        fake_pbe::Reset();
        initResult = logic.Init(&view);
        initCalls = std::exchange(view.calls, {});
    }
    kro::result_t Login(const char16_t *domain, const char16_t *user, const char16_t *password)
    {
        return view.logic->Login(domain, user, password);
    }

    std::unique_ptr<volume::Volume> opened;
    host::Texts texts;
    host::OsStart osStart;
    RecordingView view;
    host::BusinessLogic logic;
    kro::result_t initResult = kro::kUnexpected;
    Calls initCalls;
};

constexpr char16_t kRight[] = u"r\u00e4tsel 42";

class ExhaustedTranslator final : public pba::ITranslator
{
public:
    kro::wstring_t Translate(const char *, const char *, const char *, std::int32_t) override
    {
        throw std::bad_alloc();
    }
    kro::wstring_t Translate(const char *, const char *, const char *) override { throw std::bad_alloc(); }
};

} // namespace

class LogicTest : public QObject
{
    Q_OBJECT

private slots:
    void initAsksForTheFirstScreen_data()
    {
        QTest::addColumn<bool>("testBoot");
        QTest::addColumn<bool>("passwordLogin");
        QTest::addColumn<Calls>("calls");
        QTest::newRow("login") << false << true << Calls{"SetLogic", "SetOptions 1", "ShowInitialScreen"};
        QTest::newRow("nobody to log in")
            << false << false << Calls{"SetLogic", "SetOptions 0", "ShowInitialScreen"};
        QTest::newRow("test boot") << true << true
                                   << Calls{"SetLogic", "SetOptions 1", "ShowTestBootMessage"};
    }
    void initAsksForTheFirstScreen()
    {
        QFETCH(bool, testBoot);
        QFETCH(bool, passwordLogin);
        Host host(m_scratch, {{}, testBoot}, {passwordLogin, false});
        QCOMPARE(host.initResult, kro::kOk);
        QTEST(host.initCalls, "calls");
    }

    void aRightPasswordStartsTheSystem()
    {
        Host host(m_scratch);
        QCOMPARE(host.Login(u"OFFICE", u"boris", u"paper boat"), kro::kOk);
        QCOMPARE(host.view.calls, Calls{"ShowLoggedIn"});
        QVERIFY(!host.osStart.HasStarted());
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kOk);
        QCOMPARE(host.view.calls, (Calls{"ShowLoggedIn", "ShowStartingOsScreen", "Close"}));
        QVERIFY(host.osStart.HasStarted() && !host.osStart.HasTestBootEnded());
        QCOMPARE(fake_pbe::Calls(), (Calls{"busy on", "busy off"}));
    }

    void aRefusedLogin_data()
    {
        QTest::addColumn<QString>("user");
        QTest::newRow("wrong password") << "anna";
        QTest::newRow("unknown user") << "carl";
    }
    void aRefusedLogin()
    {
        QFETCH(QString, user);
        Host host(m_scratch);
        host.view.duringMessage = [] { QCOMPARE(fake_pbe::Calls(), (Calls{"busy on", "busy off"})); };
        QCOMPARE(host.Login(u"", reinterpret_cast<const char16_t *>(user.utf16()), u"Oops-secret"), kro::kOk);
        QCOMPARE(host.view.calls, (Calls{"ShowMessage 1 0", "SelectPassword"}));
        QVERIFY(host.view.messages.first().startsWith("Wrong user name or password|"));
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        QCOMPARE(host.view.calls.size(), 2);
        QVERIFY(!fake_pbe::LogText().contains("Oops") && !fake_pbe::LogText().contains(user.toUtf8()));
    }

    void nothingStartsWithoutAnOpenKeyslot()
    {
        Host host(m_scratch);
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        host.Login(u"", u"anna", kRight);
        host.Login(u"", u"anna", u"now wrong"); // what was open before counts no longer
        host.view.calls.clear();
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        QVERIFY(host.view.calls.isEmpty() && !host.osStart.HasStarted());
    }

    // No device mapper takes such a name, so this fails also where tests may map volumes.
    void aMappingThatFailsStartsNothing()
    {
        Host host(m_scratch, {"no/such/name", false});
        QCOMPARE(host.Login(u"", u"anna", kRight), kro::kOk);
        QCOMPARE(host.view.calls, Calls{"ShowLoggedIn"});
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kUnspecifiedError);
        QCOMPARE(host.view.calls, Calls{"ShowLoggedIn"});
        QVERIFY(!host.osStart.HasStarted());
        QVERIFY(fake_pbe::LogText().contains("cannot be mapped"));
    }

    void aLoginInsideALoginIsRefused()
    {
        Host host(m_scratch);
        kro::result_t nested = kro::kOk;
        host.view.duringMessage = [&] { nested = host.Login(u"", u"anna", kRight); };
        QCOMPARE(host.Login(u"", u"anna", u"wrong"), kro::kOk);
        QCOMPARE(nested, kro::kInvalidState);
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        QCOMPARE(host.Login(u"", u"anna", kRight), kro::kOk); // and the next one is free again
        QCOMPARE(host.view.calls.last(), "ShowLoggedIn");
    }

    void aTestBootNeedsNoKeyAndStartsNothing()
    {
        Host host(m_scratch, {{}, true});
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kOk);
        QCOMPARE(host.view.calls, (Calls{"ShowStartingOsScreen", "Close"}));
        QVERIFY(host.osStart.HasTestBootEnded() && !host.osStart.HasStarted());
    }

    void automaticLogonIsTriedOnce_data()
    {
        QTest::addColumn<bool>("allowed");
        QTest::newRow("allowed") << true;
        QTest::newRow("not allowed") << false;
    }
    void automaticLogonIsTriedOnce()
    {
        QFETCH(bool, allowed);
        Host host(m_scratch, {}, {true, allowed});
        bool suppressed = false;
        QCOMPARE(host.view.logic->IsAutologonSuppressed(&suppressed), kro::kOk);
        QCOMPARE(suppressed, !allowed);
        suppressed = false;
        host.view.logic->IsAutologonSuppressed(&suppressed);
        QVERIFY(suppressed);
    }

    void anUnavailablePasswordChangeIsNoDeadEnd()
    {
        Host host(m_scratch);
        host.Login(u"", u"anna", kRight);
        bool allowed = true;
        kro::wstring_t title;
        kro::wstring_t message;
        QCOMPARE(host.view.logic->GetPasswordChangeInfo(&allowed, &title, &message), kro::kOk);
        QVERIFY(!allowed && !title.IsEmpty() && !message.IsEmpty());
        host.view.calls.clear();
        QCOMPARE(host.view.logic->ConfirmLoggedIn(), kro::kOk);
        QCOMPARE(host.view.calls, Calls{"ShowLoggedIn"});
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kOk);
    }

    void noExceptionReachesTheView()
    {
        ExhaustedTranslator translator;
        Host host(m_scratch, {}, {}, &translator);
        QCOMPARE(host.Login(u"", u"anna", u"wrong"), kro::kOutOfMemory);
        QVERIFY(host.view.calls.isEmpty());
    }

    void aClosingThatFailsIsReported()
    {
        Host host(m_scratch, {{}, true});
        host.view.closeResult = kro::kUnexpected;
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kUnexpected);
    }

private:
    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(LogicTest);

#include "tst_logic.moc"
