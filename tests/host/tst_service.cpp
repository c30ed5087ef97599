// SPDX-License-Identifier: Apache-2.0
// The service as a screen meets it, which need not be one of ours.
#include "tests/host/host_on_volume.h"
#include "tests/host/recoverable_computer.h"
#include "tests/support/test_main.h"

using namespace protocol;

namespace {

struct Scene : ServiceOnVolume
{
    using ServiceOnVolume::ServiceOnVolume;
    template <typename Request>
    typename Request::Reply Ask(const Request &request)
    {
        auto reply = client->Ask(request);
        if (!reply)
            qFatal("no answer: %s", Describe(client->WhyClosed()));
        return *reply;
    }
    TryPasswordReply Login(std::string_view password)
    {
        return Ask(TryPassword{"", "anna", MakeSecret(password)});
    }
    ReplacePasswordReply Replace(std::string_view password)
    {
        return Ask(ReplacePassword{MakeSecret(password)});
    }
};

constexpr std::string_view kRight = ScratchVolume::kPassword;

} // namespace

class ServiceTest : public QObject
{
    Q_OBJECT

private slots:
    // Whatever a screen does between the login and the start that is no part of it.
    void onlyWhoWasLetInGoesOn()
    {
        const std::pair<const char *, void (*)(Scene &)> rows[] = {
            {"another screen", [](Scene &scene) { scene.Ask(Hello{}); }},
            {"given up", [](Scene &scene) { scene.Ask(Forget{}); }},
            {"wrong", [](Scene &scene) { QCOMPARE(scene.Login("wrong").result, LoginResult::Wrong); }},
            {"recovery",
             [](Scene &scene) { QCOMPARE(scene.Ask(RecoveryBegin{}).offer, RecoveryOffer::None); }},
            {"token", [](Scene &scene) { QCOMPARE(scene.Ask(TryToken{}).tokenError, TokenError::Removed); }},
            {"the screen ends", [](Scene &scene) { scene.service.Forget(); }},
        };
        const ScratchVolume scratch;
        for (const auto &[name, act] : rows) {
            Scene scene(scratch);
            QVERIFY(scene.Ask(Hello{}).autologonAllowed);
            QCOMPARE(scene.Login(kRight).result, LoginResult::Opened);
            QCOMPARE(scene.Ask(CheckReplaceable{}).error, VolumeError::None);
            act(scene);
            QVERIFY2(scene.Ask(Start{}).result == StartResult::Prohibited, name);
            QCOMPARE(scene.Ask(CheckReplaceable{}).error, VolumeError::NotReplaceable);
            const ReplacePasswordReply reply = scene.Replace("paper ship");
            QVERIFY2(reply.error == VolumeError::NotReplaceable && !reply.letIn, name);
            QVERIFY(scene.Ask(RecoveryEntropy{}).challenge.empty());
            QCOMPARE(scene.Ask(RecoveryFinish{}).result, RecoveryResult::Failed);
            QVERIFY(!scene.Ask(Hello{}).autologonAllowed);
            QCOMPARE(scene.Login(kRight).result, LoginResult::Opened);
            QCOMPARE(scene.Ask(Start{}).result, StartResult::Started);
        }
    }

    void guessing()
    {
        const ScratchVolume scratch;
        QVERIFY(volume::SetPolicy(*scratch.Open(), {.freeAttempts = 1}) == volume::Error::None);
        Memory memory;
        for (const char *password : {"wrong", "wronger"}) {
            Scene scene(scratch, {}, &memory);
            scene.Ask(Hello{});
            QCOMPARE(scene.Login(password).result, LoginResult::Wrong);
        }
        Scene scene(scratch, {}, &memory);
        scene.Ask(Hello{});
        const TryPasswordReply refused = scene.Login(kRight);
        QVERIFY(refused.result == LoginResult::Wait && refused.secondsToWait == 30);
        QCOMPARE(scene.Ask(Start{}).result, StartResult::Prohibited);
        memory.sinceBoot += 30;
        QCOMPARE(scene.Login(kRight).result, LoginResult::Opened);
    }

    void whatIsOffered()
    {
        const ScratchVolume scratch;
        Scene prohibited(scratch, {"", false, false});
        QVERIFY(!prohibited.Ask(Hello{}).passwordsOffered);
        QCOMPARE(prohibited.Login(kRight).result, LoginResult::Failed);
        QCOMPARE(prohibited.Ask(Start{}).result, StartResult::Prohibited);
        Scene testBoot(scratch, {"", true});
        const HelloReply hello = testBoot.Ask(Hello{});
        QVERIFY(hello.testBoot && hello.passwordsOffered && hello.leastPasswordLength == 8);
        QCOMPARE(testBoot.Ask(Start{}).result, StartResult::TestBootEnded);
    }

    void anExpiredPassword()
    {
        for (const bool writable : {true, false}) {
            const ScratchVolume scratch;
            ScratchVolume::Expire(*scratch.Open(), {});
            Scene scene(scratch);
            scene.Ask(Hello{});
            const TryPasswordReply login = scene.Login(kRight);
            QVERIFY(login.result == LoginResult::Opened && login.mustReplace && login.hasExpired);
            QCOMPARE(scene.Ask(Start{}).result, StartResult::Prohibited);
            QVERIFY(scene.Replace("short").error == VolumeError::PasswordTooShort);
            QVERIFY(!scene.Replace(kRight).letIn);
            if (!writable) // the disk goes away: nobody is locked out by that
                QVERIFY(QFile::remove(QString::fromStdString(scratch.Path())));
            const ReplacePasswordReply reply = scene.Replace("paper ship");
            QVERIFY((reply.error == VolumeError::None) == writable && reply.letIn);
            QCOMPARE(scene.Ask(Start{}).result, StartResult::Started);
        }
    }

    void recovery()
    {
        Computer computer(true);
        Scene scene(computer.scratch);
        const auto finish = [&](const recovery::ChallengeStrings &challenge) {
            recovery::ResponseLines lines = computer.Respond(challenge, {"OFFICE", "boris"});
            return scene.Ask(RecoveryFinish{{std::move(lines[0]), std::move(lines[1])}});
        };
        scene.Ask(Hello{});
        QCOMPARE(scene.Ask(RecoveryBegin{}).offer, RecoveryOffer::Ready);
        const recovery::ChallengeStrings former = Challenge(scene);
        for (int rejections = 1; rejections <= 5; ++rejections) {
            Challenge(scene); // a new one does not take the rejections back
            QCOMPARE(finish(former).result,
                     rejections < 5 ? RecoveryResult::Rejected : RecoveryResult::RejectedTooOften);
        }
        QVERIFY(scene.Ask(RecoveryEntropy{}).challenge.empty());
        QCOMPARE(scene.Ask(RecoveryBegin{}).offer, RecoveryOffer::Ready);
        const RecoveryFinishReply accepted = finish(Challenge(scene));
        QVERIFY(accepted.result == RecoveryResult::Accepted && accepted.domain == "OFFICE");
        QCOMPARE(accepted.user, std::string("boris"));
        QCOMPARE(scene.Ask(Start{}).result, StartResult::Prohibited);
        QVERIFY(scene.Replace("paper ship").letIn);
        QCOMPARE(scene.Ask(Start{}).result, StartResult::Started);
    }

private:
    static recovery::ChallengeStrings Challenge(Scene &scene)
    {
        const RecoveryEntropyReply reply = scene.Ask(RecoveryEntropy{MakeSecret("entropy")});
        recovery::ChallengeStrings strings;
        if (reply.challenge.size() != strings.size())
            qFatal("no challenge");
        for (std::size_t i = 0; i < strings.size(); ++i)
            strings[i] = reply.challenge[i].text;
        return strings;
    }
};

PBA_REGISTER_TEST(ServiceTest);

#include "tst_service.moc"
