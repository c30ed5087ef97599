// The host's answers to the view, on a real volume and with a view that records.
#include <functional>

#include "business_logic.h"
#include "fake_pbe.h"
#include "scratch_volume.h"
#include "silent_view.h"
#include "test_main.h"

using Calls = QList<QByteArray>;

namespace {

constexpr char16_t kRight[] = u"r\u00e4tsel 42";

class RecordingView final : public SilentView
{
public:
    Calls calls;
    std::function<void()> duringMessage = [] {};

private:
    kro::result_t Note(const char *call) override
    {
        calls.append(call);
        if (calls.last() == "Wrong")
            duringMessage();
        return kro::kOk;
    }
};

// A host around the volume; members in the order in which they depend on each other.
struct Host
{
    explicit Host(const ScratchVolume &scratch, host::StartOptions start = {},
                  host::LogicOptions options = {})
        : opened(scratch.Open())
        , texts(nullptr)
        , osStart(*opened, std::move(start))
        , logic(osStart, texts, options)
    {
        fake_pbe::Reset();
        if (logic.Init(&view) != kro::kOk)
            qFatal("Init fails");
        view.calls.clear();
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
};

} // namespace

class LogicTest : public QObject
{
    Q_OBJECT

private slots:
    void onlyAnOpenKeyslotStartsTheSystem()
    {
        Host host(m_scratch);
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        QCOMPARE(host.Login(u"", u"anna", kRight), kro::kOk);
        host.Login(u"", u"anna", u"now wrong"); // what was open before counts no longer
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        QCOMPARE(host.view.calls, (Calls{"LoggedIn", "Wrong", "SelectPassword"}));
        QCOMPARE(host.Login(u"OFFICE", u"boris", u"paper boat"), kro::kOk);
        QVERIFY(!host.osStart.HasStarted());
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kOk);
        QCOMPARE(host.view.calls.mid(3), (Calls{"LoggedIn", "StartingOs", "Close"}));
        QVERIFY(host.osStart.HasStarted() && !host.osStart.HasTestBootEnded());
    }

    void aRefusedLogin()
    {
        for (const char16_t *user : {u"anna", u"carl"}) { // a known one and a stranger: all the same
            Host host(m_scratch);
            host.view.duringMessage = [] { QCOMPARE(fake_pbe::Calls(), (Calls{"busy on", "busy off"})); };
            QCOMPARE(host.Login(u"", user, u"Oops-secret"), kro::kOk);
            QCOMPARE(host.view.calls, (Calls{"Wrong", "SelectPassword"}));
            QCOMPARE(host.opened->DerivationCount(), 1u);
            QVERIFY(!fake_pbe::LogText().contains("Oops"));
            QVERIFY(!fake_pbe::LogText().contains(QString::fromUtf16(user).toUtf8()));
        }
    }

    // No device mapper takes such a name, so this fails also where tests may map volumes.
    void aMappingThatFailsStartsNothing()
    {
        Host host(m_scratch, {"no/such/name", false});
        host.Login(u"", u"anna", kRight);
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kUnspecifiedError);
        QCOMPARE(host.view.calls, Calls{"LoggedIn"});
        QVERIFY(!host.osStart.HasStarted() && fake_pbe::LogText().contains("cannot be mapped"));
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
        QCOMPARE(host.view.calls.last(), "LoggedIn");
    }

    void automaticLogonIsTriedOnceAndOnlyWhenAllowed()
    {
        for (const bool allowed : {true, false}) {
            Host host(m_scratch, {}, {true, allowed});
            bool first = allowed;
            bool second = false;
            QCOMPARE(host.view.logic->IsAutologonSuppressed(&first), kro::kOk);
            QCOMPARE(host.view.logic->IsAutologonSuppressed(&second), kro::kOk);
            QCOMPARE(first, !allowed);
            QVERIFY(second);
        }
    }

    void noExceptionReachesTheView()
    {
        Host host(m_scratch);
        host.view.duringMessage = [] { throw std::bad_alloc(); };
        QCOMPARE(host.Login(u"", u"anna", u"wrong"), kro::kOutOfMemory);
        QCOMPARE(host.Login(u"", u"anna", kRight), kro::kOk);
    }

private:
    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(LogicTest);

#include "tst_logic.moc"
