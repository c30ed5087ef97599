// What a loss of power, or a second program, in the middle of a change leaves of a volume.
#include "tests/support/run_program.h"
#include "tests/host/scratch_volume.h"
#include "tests/support/test_main.h"
#include "volume/token/volume_tokens.h"

using volume::Error;

namespace {

const volume::UserName kAnna{"", "anna"};
const volume::UserName kCarl{"", "carl"};
constexpr char kNewPassword[] = "silver spoon"; // and the token's PIN
constexpr int kPowerLost = 86;

// What authorises, and the new one.
const QByteArray kPasswords = QByteArray(ScratchVolume::kPassword) + '\n' + kNewPassword + '\n';

const QStringList kChangePassword{"user", "passwd", "anna", "--password-stdin"};
const QStringList kAddUser{"user", "add", "carl", "--password-stdin"};
const QStringList kAddToken = QString("token add --user carl --token pkcs11:token=Carl --password-stdin "
                                      "--pkcs11-module /usr/lib/softhsm/libsofthsm2.so")
                                  .split(' ');
const QStringList kRemoveToken{"token", "remove", "--keyslot", "2"};

int RunUntil(int moment, const ScratchVolume &scratch, const QStringList &command)
{
    const QString path = QString::fromStdString(scratch.Path());
    const QStringList environment{"LD_PRELOAD=" POWER_LOSS, "PBA_POWER_LOSS_FILE=" + path,
                                  "PBA_POWER_LOSS_AT=" + QString::number(moment), PBA_ADMIN};
    return Run("/usr/bin/env", environment + command + QStringList{"--volume", path}, kPasswords).exitCode;
}

// Each user has one keyslot, be it a token's, and nothing else has any.
void CompareWhole(const volume::Volume &volume)
{
    const std::vector<token::VolumeToken> tokens = token::TokensOf(volume);
    for (const volume::User &user : volume.Users()) {
        const auto owned = std::count_if(tokens.begin(), tokens.end(), [&](const token::VolumeToken &token) {
            return token.owner == user.name && token.enrolment.keyslots.size() == 1;
        });
        QVERIFY(user.keyslots.size() + owned == 1 && !user.pending && !user.isNew);
    }
    QCOMPARE(volume.Keyslots().size(), volume.Users().size());
    QCOMPARE(volume.Objects(token::kOwnerType).size(), tokens.size());
}

} // namespace

class PowerLossTest : public QObject
{
    Q_OBJECT

private slots:
    void aLossAtEveryWriteAndSync()
    {
        const QTemporaryDir tokens;
        QCOMPARE(Run(SOFT_TOKEN, {tokens.path(), "Carl", kNewPassword}).exitCode, 0);
        qputenv("SOFTHSM2_CONF", tokens.filePath("softhsm2.conf").toUtf8());
        for (const QStringList &command : {kChangePassword, kAddUser, kAddToken, kRemoveToken}) {
            const ScratchVolume before;
            AllowAnyPassword(before);
            if (command == kRemoveToken)
                QCOMPARE(RunUntil(0, before, kAddToken), 0);
            int moment = 0;
            for (int exitCode = kPowerLost; exitCode == kPowerLost; ++moment) {
                const ScratchVolume scratch(before);
                exitCode = RunUntil(moment + 1, scratch, command);
                QVERIFY2(exitCode == kPowerLost || exitCode == 0, qPrintable(QString::number(moment)));
                CheckSound(scratch, command[1], exitCode == 0);
                if (QTest::currentTestFailed())
                    qFatal("at the write or sync number %d", moment + 1);
            }
            QVERIFY2(moment > 20, "not all calls were seen");
        }
    }

    void severalProgramsAtOnce()
    {
        const ScratchVolume scratch;
        QProcess programs[4];
        for (QProcess &program : programs) {
            const QString name = "user" + QString::number(&program - programs);
            program.start(PBA_ADMIN, {"user", "add", "--volume", QString::fromStdString(scratch.Path()), name,
                                      "--password-stdin"});
            program.write(kPasswords);
            program.closeWriteChannel();
        }
        for (QProcess &program : programs) {
            QVERIFY(program.waitForFinished());
            QVERIFY2(program.exitCode() == 0, program.readAllStandardError());
            const std::string name = "user" + std::to_string(&program - programs);
            QCOMPARE(scratch.Login({"", name}, kNewPassword), Error::None);
        }
        CompareWhole(*scratch.Open());
    }

private:
    // Looking for the old one among them would cost a derivation each time.
    static void AllowAnyPassword(const ScratchVolume &scratch)
    {
        volume::Policy policy;
        policy.notOldPassword = false;
        QCOMPARE(scratch.Open()->SetPolicy(policy), Error::None);
    }
    static void CheckSound(const ScratchVolume &scratch, const QString &command, bool done)
    {
        const auto opened = scratch.Open();
        QVERIFY(OpensForAnna(scratch, done && command == "passwd"));
        QCOMPARE(opened->FinishPending(), Error::None);
        QCOMPARE(token::FinishPending(*opened), Error::None);
        QVERIFY(OpensForAnna(scratch, done && command == "passwd"));
        CompareWhole(*scratch.Open());
        const auto carl = opened->FindUser(kCarl);
        if (carl && !carl->keyslots.empty())
            QCOMPARE(scratch.Login(kCarl, kNewPassword), Error::None);
        QVERIFY(!done || carl.has_value() == (command == "add"));
    }
    static bool OpensForAnna(const ScratchVolume &scratch, bool changed)
    {
        const auto opens = [&](std::string_view password) {
            return scratch.Login(kAnna, password) == Error::None;
        };
        return changed ? opens(kNewPassword) && !opens(ScratchVolume::kPassword)
                       : opens(ScratchVolume::kPassword) || opens(kNewPassword);
    }
};

PBA_REGISTER_TEST(PowerLossTest);

#include "tst_power_loss.moc"
