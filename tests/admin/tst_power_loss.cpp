// What a loss of power, or a second program, in the middle of a change leaves of a volume.
#include "../host/scratch_volume.h"
#include "run_program.h"
#include "test_main.h"

using volume::Error;

namespace {

const volume::UserName kAnna{"", "anna"};
constexpr char kNewPassword[] = "silver spoon";
constexpr int kPowerLost = 86;

Error Login(volume::Volume &volume, const volume::UserName &name, std::string_view password)
{
    return volume.Login(name, MakeSecret(password), nullptr);
}

// What authorises, and the new one.
const QByteArray kPasswords = QByteArray(ScratchVolume::kPassword) + '\n' + kNewPassword + '\n';

int RunUntil(int moment, const ScratchVolume &scratch, const QStringList &user)
{
    const QString path = QString::fromStdString(scratch.Path());
    const QStringList environment{"LD_PRELOAD=" POWER_LOSS, "PBA_POWER_LOSS_FILE=" + path,
                                  "PBA_POWER_LOSS_AT=" + QString::number(moment)};
    const QStringList command{PBA_ADMIN, "user", "--volume", path, "--password-stdin"};
    return Run("/usr/bin/env", environment + command.first(2) + user + command.mid(2), kPasswords).exitCode;
}

// Each user has one keyslot, and nothing else has any.
void CompareWhole(const volume::Volume &volume)
{
    for (const volume::User &user : volume.Users())
        QVERIFY(user.keyslots.size() == 1 && !user.pending && !user.isNew);
    QCOMPARE(volume.Keyslots().size(), volume.Users().size());
}

} // namespace

class PowerLossTest : public QObject
{
    Q_OBJECT

private slots:
    void aLossAtEveryWriteAndSync()
    {
        for (const QStringList &user : {QStringList{"passwd", "anna"}, QStringList{"add", "carl"}}) {
            int moment = 0;
            for (int exitCode = kPowerLost; exitCode == kPowerLost; ++moment) {
                const ScratchVolume scratch;
                AllowAnyPassword(scratch);
                exitCode = RunUntil(moment + 1, scratch, user);
                QVERIFY2(exitCode == kPowerLost || exitCode == 0, qPrintable(QString::number(moment)));
                CheckSound(scratch, user[0], exitCode == 0);
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
            QCOMPARE(Login(*scratch.Open(), {"", name}, kNewPassword), Error::None);
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
        const volume::UserName carl{"", "carl"};
        const auto opened = scratch.Open();
        QVERIFY(OpensForAnna(*opened, done && command == "passwd"));
        QCOMPARE(opened->FinishPending(), Error::None);
        QVERIFY(OpensForAnna(*opened, done && command == "passwd"));
        CompareWhole(*scratch.Open());
        if (opened->FindUser(carl))
            QCOMPARE(Login(*opened, carl, kNewPassword), Error::None);
        QVERIFY(!done || command == "passwd" || opened->FindUser(carl));
    }
    static bool OpensForAnna(volume::Volume &volume, bool changed)
    {
        const auto opens = [&](std::string_view password) {
            return Login(volume, kAnna, password) == Error::None;
        };
        return changed ? opens(kNewPassword) && !opens(ScratchVolume::kPassword)
                       : opens(ScratchVolume::kPassword) || opens(kNewPassword);
    }
};

PBA_REGISTER_TEST(PowerLossTest);

#include "tst_power_loss.moc"
