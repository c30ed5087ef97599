// A forgotten password, from the button to the new one: the host on a real volume, a view that records, and
// the test in the administrator's place.
#include "business_logic.h"
#include "fake_pbe.h"
#include "recovery/challenge.h"
#include "scratch_volume.h"
#include "silent_view.h"
#include "test_main.h"

using volume::Error;
using Calls = QList<QByteArray>;

namespace {

class RecoveryView final : public SilentView, public pba::IPasswordRecoveryView
{
public:
    Calls calls;
    pba::IPasswordRecoveryLogic *recovery = nullptr;
    recovery::ChallengeStrings challenge;

    kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &, std::uint32_t,
                              std::uint32_t) override
    {
        return Note(QString::fromUtf16(title.Data()).toUtf8());
    }
    using SilentView::SetLogic;
    void SetLogic(pba::IPasswordRecoveryLogic *newLogic) override { recovery = newLogic; }
    kro::result_t StartEntropyCollection(std::uint32_t amount) override
    {
        return Note("Entropy " + QByteArray::number(amount));
    }
    kro::result_t ShowChallenge(const kro::vector_t<kro::string_t> &strings) override
    {
        for (std::size_t i = 0; i < challenge.size(); ++i)
            challenge[i] = strings[i].View();
        return Note("Challenge");
    }
    kro::result_t StartResponceInput() override { return Note("Response"); }

private:
    kro::result_t Note(const char *call) override
    {
        calls.append(call);
        return kro::kOk;
    }
};

// The computer and the help desk. Members in the order in which they depend on each other.
struct Scene
{
    explicit Scene(bool withRecovery = true)
        : opened(scratch.Open())
    {
        fake_pbe::Reset();
        volume::Secret key;
        const auto keep = [this](const recovery::Identity &kept, const recovery::RecoverySecret &its) {
            identity = kept;
            std::copy(its.View().begin(), its.View().end(), secret.Data());
        };
        if (withRecovery &&
            (opened->Authorise(MakeSecret(ScratchVolume::kPassword), &key) != Error::None ||
             recovery::SetUp(*opened, key, recovery::PublicKeyOf(administrator), keep) != Error::None))
            qFatal("no recovery");
        if (logic.Init(&view) != kro::kOk || logic.StartPasswordRecovery(&view) != kro::kOk)
            qFatal("no start");
        view.calls.removeFirst(); // the initial screen
    }
    // Another challenge each time.
    void GatherEntropy()
    {
        kro::vector_t<std::uint8_t> entropy;
        entropy.Resize(32);
        QCOMPARE(view.recovery->SetEntropy(entropy), kro::kOk);
    }
    // What the administrator reads out.
    kro::vector_t<kro::string_t> Respond(const volume::UserName &name)
    {
        const auto challenge = recovery::DecodeChallenge(view.challenge);
        if (!challenge || !BelongsTo(*challenge, identity))
            qFatal("no challenge of this computer");
        const auto response =
            recovery::MakeResponse(administrator, identity, challenge->ephemeral, secret, name);
        kro::vector_t<kro::string_t> lines;
        for (const volume::Secret &line : *response)
            lines.PushBack(kro::string_t(line.View()));
        return lines;
    }
    // Types the lines as the view hands them over. False as soon as something is refused.
    bool Type(const kro::vector_t<kro::string_t> &lines)
    {
        kro::vector_t<kro::string_t> accepted;
        bool complete = false;
        bool valid = true;
        for (const kro::string_t &line : lines) {
            accepted.PushBack(line);
            complete = valid = false;
            if (view.recovery->CheckResponseLine(line) != kro::kOk ||
                view.recovery->CheckResponse(accepted, &complete, &valid) != kro::kOk || !valid)
                return false;
        }
        return valid && complete;
    }
    Error Login(const volume::UserName &name, const char *password)
    {
        return scratch.Open()->Login(name, MakeSecret(password), nullptr);
    }

    ScratchVolume scratch;
    std::unique_ptr<volume::Volume> opened;
    recovery::SecretKey administrator = recovery::MakeEphemeral({});
    recovery::Identity identity;
    recovery::RecoverySecret secret;
    host::Texts texts{nullptr};
    host::OsStart osStart{*opened, {}};
    host::FileStateStore store;
    host::LoginThrottle throttle{store, {}};
    host::BusinessLogic logic{osStart, throttle, texts, {}};
    RecoveryView view;
};

const volume::UserName kBoris{"office", "Boris"}; // as the caller spelled it

} // namespace

class PasswordRecoveryTest : public QObject
{
    Q_OBJECT

private slots:
    void theWholeWay()
    {
        Scene scene;
        QVERIFY(scene.view.recovery->IsRecoveryInProgress());
        scene.GatherEntropy();
        QCOMPARE(scene.view.calls, (Calls{"Entropy 32", "Challenge"}));
        const auto lines = scene.Respond(kBoris);
        QCOMPARE(scene.view.recovery->CheckResponseLine(lines[1]), kro::kFalse); // the second comes second
        QCOMPARE(scene.view.recovery->GotoChangePassword(), kro::kInvalidState);
        QVERIFY(scene.Type(lines));
        QCOMPARE(scene.logic.StartOperatingSystem(), kro::kProhibited); // not with the old password
        QCOMPARE(scene.view.recovery->GotoChangePassword(), kro::kOk);

        kro::wstring_t domain;
        kro::wstring_t user;
        QCOMPARE(scene.view.logic->PrepareChangePassword(&domain, &user), kro::kOk);
        QVERIFY(domain.View() == u"OFFICE" && user.View() == u"boris");
        QCOMPARE(scene.view.logic->ChangePassword(u"short"), kro::kOk);
        QCOMPARE(scene.view.logic->ChangePassword(u"paper boat"), kro::kOk);
        QCOMPARE(scene.Login({"OFFICE", "boris"}, ScratchVolume::kOtherPassword), Error::None);
        QCOMPARE(scene.view.logic->ChangePassword(u"N\u00e4chste 7"), kro::kOk);
        QCOMPARE(scene.view.calls.mid(2), (Calls{"MustChangePassword", "The new password is too short",
                                                 "The new password is the old one", "LoggedIn"}));
        QCOMPARE(scene.logic.StartOperatingSystem(), kro::kOk);
        QCOMPARE(scene.Login({"OFFICE", "boris"}, "N\u00e4chste 7"), Error::None);
        QCOMPARE(scene.Login({"OFFICE", "boris"}, ScratchVolume::kOtherPassword), Error::WrongPassword);
        QCOMPARE(scene.Login({"", "anna"}, ScratchVolume::kPassword), Error::None);
        QVERIFY(recovery::Find(*scene.scratch.Open())->enrolment.used);
        for (const kro::string_t &line : lines)
            QVERIFY(!fake_pbe::LogText().contains(line.Data()));
    }

    // Leaving or starting anew takes everything back, also what an accepted response has opened.
    void quitAndRestart_data()
    {
        QTest::addColumn<bool>("quits");
        QTest::addColumn<int>("step");
        const char *steps[] = {"no entropy yet", "challenge", "one line", "response accepted"};
        for (int i = 0; i < 8; ++i)
            QTest::addRow("%s, %s", i % 2 ? "quit" : "restart", steps[i / 2]) << (i % 2 == 1) << i / 2;
    }
    void quitAndRestart()
    {
        QFETCH(bool, quits);
        QFETCH(int, step);
        Scene scene;
        kro::vector_t<kro::string_t> lines;
        if (step >= 1) {
            scene.GatherEntropy();
            lines = scene.Respond(kBoris);
        }
        kro::vector_t<kro::string_t> typed = lines;
        typed.Resize(step == 2 ? 1 : step == 3 ? 2 : 0);
        QCOMPARE(scene.Type(typed), step == 3);
        scene.view.calls.clear();
        QCOMPARE(quits ? scene.view.recovery->QuitRecovery() : scene.view.recovery->RestartRecovery(),
                 kro::kOk);
        QCOMPARE(scene.view.calls, Calls{quits ? "InitialScreen" : "Entropy 32"});
        QCOMPARE(scene.view.recovery->IsRecoveryInProgress(), !quits);
        QCOMPARE(scene.view.recovery->GotoChangePassword(), kro::kInvalidState);
        QCOMPARE(scene.logic.StartOperatingSystem(), kro::kProhibited);
        if (quits)
            QCOMPARE(scene.logic.StartPasswordRecovery(&scene.view), kro::kOk);
        scene.GatherEntropy();
        QVERIFY(!scene.Type(lines)); // for the former challenge
        QVERIFY(scene.Type(scene.Respond(kBoris)));
    }

    void rejectedTooOften()
    {
        Scene scene;
        scene.GatherEntropy();
        const auto former = scene.Respond(kBoris);
        QCOMPARE(scene.view.recovery->RestartRecovery(), kro::kOk);
        scene.GatherEntropy();
        for (int i = 0; i < 5; ++i)
            QVERIFY(!scene.Type(former));
        QCOMPARE(scene.view.calls.mid(4), Calls{"Too many rejected responses"});
        QVERIFY(!scene.Type(scene.Respond(kBoris))); // void now
        QCOMPARE(scene.view.recovery->RestartRecovery(), kro::kOk);
        scene.GatherEntropy();
        QVERIFY(scene.Type(scene.Respond(kBoris)));
    }

    void aUserWhoDoesNotExist()
    {
        Scene scene;
        scene.GatherEntropy();
        QVERIFY(!scene.Type(scene.Respond({"OFFICE", "anna"})));
        QCOMPARE(scene.view.calls.last(), "Unknown user");
        QVERIFY(recovery::Find(*scene.scratch.Open())->enrolment.used);
        QCOMPARE(scene.logic.StartOperatingSystem(), kro::kProhibited);
        // The administrator needs no other challenge for another name.
        QVERIFY(scene.Type(scene.Respond({"", "boris"})));
    }

    void withoutRecovery()
    {
        Scene scene(false);
        QCOMPARE(scene.view.calls, Calls{"No password recovery"});
        QVERIFY(!scene.view.recovery->IsRecoveryInProgress());
        QCOMPARE(scene.view.recovery->SetEntropy({}), kro::kInvalidState);
        QCOMPARE(scene.view.recovery->CheckResponseLine("2R385JS0WGGKC16N8"), kro::kFalse);
    }
};

PBA_REGISTER_TEST(PasswordRecoveryTest);

#include "tst_password_recovery.moc"
