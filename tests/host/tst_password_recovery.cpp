// SPDX-License-Identifier: Apache-2.0
// A forgotten password, from the button to the new one: the host on a real volume, a view that records, and
// the test in the administrator's place.
#include "tests/host/host_on_volume.h"
#include "tests/host/recoverable_computer.h"
#include "tests/support/test_main.h"

using volume::Error;

namespace {

class RecoveryView final : public SilentView, public pba::IPasswordRecoveryView
{
public:
    pba::IPasswordRecoveryLogic *recovery = nullptr;
    recovery::ChallengeStrings challenge;
    std::uint32_t options = 0;

    kro::result_t SetOptions(std::uint32_t offered) override
    {
        options = offered;
        return kro::kOk;
    }
    kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &text, std::uint32_t severity,
                              std::uint32_t buttons) override
    {
        return SilentView::ShowMessage(title, text, severity, buttons);
    }
    using SilentView::SetLogic;
    void SetLogic(pba::IPasswordRecoveryLogic *newLogic) override { recovery = newLogic; }
    kro::result_t StartEntropyCollection(std::uint32_t amount) override
    {
        return Note("Entropy " + std::to_string(amount));
    }
    kro::result_t ShowChallenge(const kro::vector_t<kro::string_t> &strings) override
    {
        for (std::size_t i = 0; i < challenge.size(); ++i)
            challenge[i] = strings[i].View();
        return Note("Challenge");
    }
    kro::result_t StartResponceInput() override { return Note("Response"); }
};

struct Scene : Computer, HostOnVolume<RecoveryView>
{
    explicit Scene(bool withRecovery = true)
        : Computer(withRecovery)
        , HostOnVolume(scratch)
    {
        if (logic.StartPasswordRecovery(&view) != kro::kOk)
            qFatal("no start");
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
        kro::vector_t<kro::string_t> lines;
        for (const base::Secret &line : Computer::Respond(view.challenge, name))
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
        QCOMPARE(scene.view.TakeCalls(), (Calls{"Entropy 32", "Challenge"}));
        const auto lines = scene.Respond(kBoris);
        QCOMPARE(scene.view.recovery->CheckResponseLine(lines[1]), kro::kFalse); // the second comes second
        QCOMPARE(scene.view.recovery->GotoChangePassword(), kro::kInvalidState);
        QVERIFY(scene.Type(lines));
        QCOMPARE(scene.logic.StartOperatingSystem(), kro::kProhibited); // not with the old password
        QCOMPARE(scene.view.recovery->GotoChangePassword(), kro::kOk);

        QCOMPARE(scene.view.logic->ChangePassword(u"short"), kro::kOk);
        QCOMPARE(scene.view.logic->ChangePassword(u"paper boat"), kro::kOk);
        QCOMPARE(scene.scratch.Login({"OFFICE", "boris"}, ScratchVolume::kOtherPassword), Error::None);
        QCOMPARE(scene.view.logic->ChangePassword(u"N\u00e4chste 7"), kro::kOk);
        QCOMPARE(scene.view.TakeCalls(), (Calls{"MustChangePassword", "The new password is too short",
                                                "The new password is the old one", "LoggedIn"}));
        QCOMPARE(scene.logic.StartOperatingSystem(), kro::kOk);
        QCOMPARE(scene.scratch.Login({"OFFICE", "boris"}, "N\u00e4chste 7"), Error::None);
        QCOMPARE(scene.scratch.Login({"OFFICE", "boris"}, ScratchVolume::kOtherPassword),
                 Error::WrongPassword);
        for (const kro::string_t &line : lines)
            QVERIFY(!fake_pbe::LogText().contains(line.Data()));
    }

    // Leaving or starting anew takes everything back, also what an accepted response has opened.
    void quitAndRestart()
    {
        for (const bool quits : {false, true}) {
            Scene scene;
            pba::IPasswordRecoveryLogic &recovery = *scene.view.recovery;
            scene.GatherEntropy();
            for (std::size_t count = 0; count <= recovery::kResponseLines; ++count) {
                const auto lines = scene.Respond(kBoris);
                auto typed = lines;
                typed.Resize(count);
                QCOMPARE(scene.Type(typed), count == recovery::kResponseLines);
                scene.view.TakeCalls();
                QCOMPARE(quits ? recovery.QuitRecovery() : recovery.RestartRecovery(), kro::kOk);
                QCOMPARE(scene.view.TakeCalls(), Calls{quits ? "InitialScreen" : "Entropy 32"});
                QCOMPARE(recovery.IsRecoveryInProgress(), !quits);
                QCOMPARE(recovery.CheckResponseLine(lines[0]), kro::kFalse);
                QCOMPARE(recovery.GotoChangePassword(), kro::kInvalidState);
                QCOMPARE(scene.logic.StartOperatingSystem(), kro::kProhibited);
                if (quits)
                    QCOMPARE(scene.logic.StartPasswordRecovery(&scene.view), kro::kOk);
                scene.GatherEntropy();
                QVERIFY(!scene.Type(lines)); // for the former challenge
            }
            QVERIFY(scene.Type(scene.Respond(kBoris)));
        }
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
        QCOMPARE(scene.view.TakeCalls().back(), "Too many rejected responses");
        QVERIFY(!scene.Type(scene.Respond(kBoris))); // void now
        QCOMPARE(scene.view.recovery->RestartRecovery(), kro::kOk);
        scene.GatherEntropy();
        QVERIFY(!scene.Type(former)); // the count begins anew
        QVERIFY(scene.Type(scene.Respond(kBoris)));
    }

    void aUserWhoDoesNotExist()
    {
        Scene scene;
        scene.GatherEntropy();
        QVERIFY(!scene.Type(scene.Respond({"OFFICE", "anna"})));
        QCOMPARE(scene.view.TakeCalls().back(), "Unknown user");
        QVERIFY(recovery::Find(*scene.scratch.Open())->enrolment.used);
        QCOMPARE(scene.logic.StartOperatingSystem(), kro::kProhibited);
        // The administrator needs no other challenge for another name.
        QVERIFY(scene.Type(scene.Respond({"", "boris"})));
    }

    // Its use is noted before the keyslot is tried, for the power may go then.
    void theUseIsNoted()
    {
        Scene scene;
        scene.GatherEntropy();
        scene.secret.Data()[0] ^= 1;
        QVERIFY(!scene.Type(scene.Respond(kBoris)));
        QVERIFY(recovery::Find(*scene.scratch.Open())->enrolment.used);
    }

    // As a loss of power leaves it where no keyslot is free: the page leads to the recovery, if there is one.
    void nobodyHasAPassword()
    {
        for (const bool withRecovery : {false, true}) {
            Scene scene(withRecovery);
            for (volume::User &user : volume::UsersOf(*scene.opened)) {
                user.keyslots.clear();
                QCOMPARE(scene.opened->WriteObject(volume::EncodeUser(user), &user.object), Error::None);
            }
            QCOMPARE(scene.logic.Init(&scene.view), kro::kOk);
            QCOMPARE(scene.view.options, withRecovery ? pba::kOptionLoginByPassword : 0u);
        }
    }

    void withoutRecovery()
    {
        Scene scene(false);
        QCOMPARE(scene.view.TakeCalls().back(), "No password recovery");
        QVERIFY(!scene.view.recovery->IsRecoveryInProgress());
        QCOMPARE(scene.view.recovery->SetEntropy({}), kro::kInvalidState);
        QCOMPARE(scene.view.recovery->CheckResponseLine("2R385JS0WGGKC16N8"), kro::kFalse);
    }
};

PBA_REGISTER_TEST(PasswordRecoveryTest);

#include "tst_password_recovery.moc"
