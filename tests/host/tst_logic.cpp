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

    kro::result_t SetOptions(std::uint32_t options) override
    {
        return Note("SetOptions " + QByteArray::number(options));
    }
    kro::result_t ShowInitialScreen() override { return Note("ShowInitialScreen"); }
    kro::result_t ShowTestBootMessage() override { return Note("ShowTestBootMessage"); }
    kro::result_t ShowStartingOsScreen() override { return Note("ShowStartingOsScreen"); }
    kro::result_t Close() override { return Note("Close"); }
    kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &, std::uint32_t,
                              std::uint32_t type) override
    {
        Note(QString::fromUtf16(title.Data()).toUtf8() + ' ' + QByteArray::number(type));
        duringMessage();
        return kro::kOk;
    }
    void SelectPassword() override { Note("SelectPassword"); }
    kro::result_t ShowLoggedIn() override { return Note("ShowLoggedIn"); }

private:
    kro::result_t Note(const QByteArray &call)
    {
        calls.append(call);
        return kro::kOk;
    }
};

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
        if (logic.Init(&view) != kro::kOk)
            qFatal("Init fails");
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
    Calls initCalls;
};

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
    // The login page asks its logic at once: it must be set before.
    void theFirstScreen()
    {
        QCOMPARE(Host(m_scratch).initCalls, (Calls{"SetOptions 1", "ShowInitialScreen"}));
        QVERIFY(Host(m_scratch).view.logic);
        QCOMPARE(Host(m_scratch, {}, {false, false}).initCalls, (Calls{"SetOptions 0", "ShowInitialScreen"}));
        QCOMPARE(Host(m_scratch, {{}, true}).initCalls, (Calls{"SetOptions 1", "ShowTestBootMessage"}));
    }

    void aRightPasswordStartsTheSystem()
    {
        Host host(m_scratch);
        QCOMPARE(host.Login(u"OFFICE", u"boris", u"paper boat"), kro::kOk);
        QVERIFY(!host.osStart.HasStarted());
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kOk);
        QCOMPARE(host.view.calls, (Calls{"ShowLoggedIn", "ShowStartingOsScreen", "Close"}));
        QVERIFY(host.osStart.HasStarted() && !host.osStart.HasTestBootEnded());
    }

    void aRefusedLogin()
    {
        for (const char16_t *user : {u"anna", u"carl"}) { // a known one and a stranger: all the same
            Host host(m_scratch);
            host.view.duringMessage = [] { QCOMPARE(fake_pbe::Calls(), (Calls{"busy on", "busy off"})); };
            QCOMPARE(host.Login(u"", user, u"Oops-secret"), kro::kOk);
            QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
            QCOMPARE(host.view.calls, (Calls{"Wrong user name or password 0", "SelectPassword"}));
            QVERIFY(!fake_pbe::LogText().contains("Oops"));
            QVERIFY(!fake_pbe::LogText().contains(QString::fromUtf16(user).toUtf8()));
        }
    }

    void nothingStartsWithoutAnOpenKeyslot()
    {
        Host host(m_scratch);
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        host.Login(u"", u"anna", kRight);
        host.Login(u"", u"anna", u"now wrong"); // what was open before counts no longer
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        QVERIFY(!host.view.calls.contains("Close") && !host.osStart.HasStarted());
    }

    // No device mapper takes such a name, so this fails also where tests may map volumes.
    void aMappingThatFailsStartsNothing()
    {
        Host host(m_scratch, {"no/such/name", false});
        host.Login(u"", u"anna", kRight);
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

    void anUnavailablePasswordChangeIsNoDeadEnd()
    {
        Host host(m_scratch);
        bool allowed = true;
        kro::wstring_t title;
        kro::wstring_t message;
        QCOMPARE(host.view.logic->GetPasswordChangeInfo(&allowed, &title, &message), kro::kOk);
        QVERIFY(!allowed && !title.IsEmpty() && !message.IsEmpty());
        QCOMPARE(host.view.logic->ConfirmLoggedIn(), kro::kOk);
        QCOMPARE(host.view.calls, Calls{"ShowLoggedIn"});
    }

    void noExceptionReachesTheView()
    {
        ExhaustedTranslator translator;
        Host host(m_scratch, {}, {}, &translator);
        QCOMPARE(host.Login(u"", u"anna", u"wrong"), kro::kOutOfMemory);
        QVERIFY(host.view.calls.isEmpty());
    }

private:
    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(LogicTest);

#include "tst_logic.moc"
