// SPDX-License-Identifier: Apache-2.0
// What a loss of power, or a second program, in the middle of a change leaves of a volume.
#include "tests/host/scratch_volume.h"
#include "tests/support/run_program.h"
#include "tests/support/screen_root.h"
#include "tests/support/test_files.h"
#include "tests/support/test_main.h"
#include "volume/interrupted_changes.h"
#include "volume/luks/policy.h"
#include "volume/luks/users.h"
#include "volume/recovery/administrator_key.h"
#include "volume/recovery/escrow_record.h"

using volume::Error;

namespace {

const volume::UserName kAnna{"", "anna"};
const volume::UserName kCarl{"", "carl"};
constexpr char kNewPassword[] = "silver spoon"; // and the token's PIN

// What authorises, and the new one.
const QByteArray kPasswords = QByteArray(ScratchVolume::kPassword) + '\n' + kNewPassword + '\n';

const QString kAddUser = "user add carl --password-stdin";
const QString kAddToken = "token add --user carl --token pkcs11:token=Carl --password-stdin --pkcs11-module "
                          "/usr/lib/softhsm/libsofthsm2.so";
const QString kEnroll = "recovery enroll --admin-key key --escrow escrow --machine m --password-stdin";

// Each with those that are to come before.
const std::pair<QString, QStringList> kCommands[] = {
    {"user passwd anna --password-stdin", {}},
    {kAddUser, {}},
    {"user remove carl --password-stdin", {kAddUser, kAddToken}},
    {kAddToken, {}},
    {"token remove --keyslot 2", {kAddToken}},
    {kEnroll, {}},
    {QString(kEnroll).replace("enroll", "renew"), {kEnroll}},
    {"policy set --free-attempts 7", {}},
};

// Each user has at most one keyslot for a password and at least one way in, and nothing else has any but the
// recovery.
void CompareWhole(const volume::Header &volume)
{
    const std::vector<token::VolumeToken> tokens = token::TokensOf(volume);
    std::size_t keyslots = volume.Objects(recovery::kObjectType).size();
    for (const volume::User &user : volume::UsersOf(volume)) {
        const auto owned = std::count_if(tokens.begin(), tokens.end(), [&](const token::VolumeToken &token) {
            return token.owner == user.name && token.enrolment.keyslots.size() == 1;
        });
        QVERIFY(user.keyslots.size() < 2 && user.keyslots.size() + owned > 0);
        QVERIFY(!user.pending && !user.isNew && !user.removing);
        keyslots += user.keyslots.size() + owned;
    }
    QCOMPARE(volume.Keyslots().size(), keyslots);
    QCOMPARE(volume.Objects(token::kOwnerType).size(), tokens.size());
}

} // namespace

class PowerLossTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(Run(SOFT_TOKEN, {m_files.path(), "Carl", kNewPassword}).exitCode, 0);
        qputenv("SOFTHSM2_CONF", m_files.filePath("softhsm2.conf").toUtf8());
        WriteFile(m_files.filePath("key"),
                  QByteArray::fromStdString(recovery::EncodePublicKey(recovery::PublicKeyOf(m_key))));
    }

    void aLossAtEveryWriteAndSync_data()
    {
        QTest::addColumn<int>("command");
        for (std::size_t i = 0; i < std::size(kCommands); ++i)
            QTest::newRow(qPrintable(kCommands[i].first.section(' ', 0, 1))) << static_cast<int>(i);
    }
    // Then a disk that fails once, at each of them, and one on which nothing ever gets to the disk.
    void aLossAtEveryWriteAndSync()
    {
        QFETCH(const int, command);
        const auto &[line, preparation] = kCommands[command];
        const ScratchVolume before;
        AllowAnyPassword(before);
        for (const QString &step : preparation)
            QCOMPARE(RunAdmin(step, before).errors, QByteArray());
        int last = 0;
        const auto check = [&, line = line](const QByteArray &moment, int error) {
            const ScratchVolume scratch(before);
            last = RunUntil(moment, scratch, line, error);
            CheckSound(scratch, line, last);
            if (QTest::currentTestFailed())
                qFatal("at the write or sync %s, error %d", moment.constData(), error);
        };
        int moment = 1 - MOMENT_STEP;
        do
            check(QByteArray::number(moment += MOMENT_STEP), 0);
        while (last == kPowerLost);
        QCOMPARE(last, 0);
        QVERIFY2(moment >= 10, "not all calls were seen");
        while ((moment -= MOMENT_STEP) > 0 && !line.contains("token")) // those take long, and fail alike
            check(QByteArray::number(moment), moment / MOMENT_STEP % 2 ? EIO : ENOSPC);
        check("syncs", EIO);
        QCOMPARE(last, 1);
    }

    // The standard tool has begun with another key, or was stopped half-way. Whatever programs of ours run
    // then, it can go on, and nobody loses a way in.
    void aReencryptionUnderWay()
    {
        const QByteArray both = QByteArray(ScratchVolume::kPassword) + '\n' + ScratchVolume::kOtherPassword;
        for (const bool stopped : {false, true}) {
            const ScratchVolume scratch;
            const QString path = QString::fromStdString(scratch.Path());
            const auto reencrypt = [&](const char *how, const QStringList &environment = {}) {
                const QString line =
                    "cryptsetup reencrypt --batch-mode --force-offline-reencrypt --pbkdf pbkdf2 "
                    "--pbkdf-force-iterations 1000 --hotzone-size 1M ";
                return Run("/usr/bin/env", environment + (line + how).split(' ') + QStringList{path}, both);
            };
            QCOMPARE(reencrypt("--init-only").errors, QByteArray());
            if (stopped)
                QCOMPARE(reencrypt("--resume-only", Interrupted("30", scratch)).exitCode, kPowerLost);
            scratch.Open(); // any look at the header makes its two copies the same
            const QByteArray before = ReadFile(path);
            for (const auto &[line, preparation] : kCommands)
                CompareFailure(RunAdmin(line, scratch), 1, "is being re-encrypted; finish that");
            const ScreenRoot root;
            QDir(root.path()).mkpath("pba");
            WriteFile(root.filePath("pba/script"), "login\nstart\n");
            QCOMPARE(Run(PBA_HOST, {"--root", root.path(), "--volume", path, "--module", SCRIPTED_MODULE}, {},
                         root.path())
                         .exitCode,
                     0);
            QVERIFY(ReadFile(path) == before);
            QVERIFY(!stopped || RunStandardTool({"repair", "--batch-mode", path}, both).exitCode == 0);
            QCOMPARE(reencrypt("--resume-only").errors, QByteArray());
            QCOMPARE(scratch.Login(kAnna, ScratchVolume::kPassword), Error::None);
            QCOMPARE(scratch.Login({"OFFICE", "boris"}, ScratchVolume::kOtherPassword), Error::None);
            QCOMPARE(RunAdmin(kAddUser, scratch).errors, QByteArray());
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
            QVERIFY(program.waitForFinished(120000));
            QVERIFY2(program.exitCode() == 0, program.readAllStandardError());
            const std::string name = "user" + std::to_string(&program - programs);
            QCOMPARE(scratch.Login({"", name}, kNewPassword), Error::None);
        }
        CompareWhole(*scratch.Open());
    }

private:
    static QStringList Interrupted(const QByteArray &moment, const ScratchVolume &scratch)
    {
        return {"LD_PRELOAD=" POWER_LOSS, "PBA_POWER_LOSS_FILE=" + QString::fromStdString(scratch.Path()),
                "PBA_POWER_LOSS_AT=" + moment};
    }
    Outcome RunAdmin(const QString &command, const ScratchVolume &scratch,
                     const QStringList &environment = {}) const
    {
        const QStringList arguments{"--volume", QString::fromStdString(scratch.Path())};
        return Run("/usr/bin/env", environment + QStringList{PBA_ADMIN} + command.split(' ') + arguments,
                   kPasswords, m_files.path());
    }
    int RunUntil(const QByteArray &moment, const ScratchVolume &scratch, const QString &command,
                 int error) const
    {
        QStringList environment = Interrupted(moment, scratch);
        if (error != 0)
            environment += "PBA_POWER_LOSS_ERROR=" + QString::number(error);
        return RunAdmin(command, scratch, environment).exitCode;
    }
    // Looking for the old one among them would cost a derivation each time.
    static void AllowAnyPassword(const ScratchVolume &scratch)
    {
        volume::Policy policy;
        policy.notOldPassword = false;
        QCOMPARE(volume::SetPolicy(*scratch.Open(), policy), Error::None);
    }
    void CheckSound(const ScratchVolume &scratch, const QString &command, int exitCode) const
    {
        const bool done = exitCode == 0;
        QVERIFY(done || exitCode == 1 || exitCode == kPowerLost);
        const auto opened = scratch.Open();
        for (int times = 0; times < 2; ++times) {
            QVERIFY(OpensForAnna(scratch, done && command.contains("passwd")));
            QCOMPARE(FinishInterruptedChanges(*opened), Error::None);
        }
        CompareWhole(*scratch.Open());
        const auto carl = volume::FindUser(*opened, kCarl);
        if (carl && !carl->keyslots.empty())
            QCOMPARE(scratch.Login(kCarl, kNewPassword), Error::None);
        QVERIFY(!done || carl.has_value() == command.contains(" add "));
        QVERIFY(!done || !command.startsWith("policy") || volume::PolicyOf(*opened).freeAttempts == 7);
        if (const auto found = recovery::Find(*opened))
            QVERIFY(IsInEscrow(*found, *opened));
        else
            QVERIFY(!command.contains("renew") && !(done && command.contains("enroll")));
    }
    bool IsInEscrow(const recovery::Found &found, volume::Header &volume) const
    {
        for (const QByteArray &line : ReadFile(m_files.filePath("escrow")).split('\n')) {
            const auto record = recovery::ParseRecord(line.toStdString());
            if (!record || record->record != recovery::ToHex(found.enrolment.identity.record))
                continue;
            const auto kept = recovery::UnsealRecord(*record, m_key);
            return kept && volume.OpenKeyslot(found.enrolment.keyslots.front(),
                                              recovery::PassphraseOf(kept->secret), nullptr) == Error::None;
        }
        return false;
    }
    static bool OpensForAnna(const ScratchVolume &scratch, bool changed)
    {
        const auto opens = [&](std::string_view password) {
            return scratch.Login(kAnna, password) == Error::None;
        };
        return changed ? opens(kNewPassword) && !opens(ScratchVolume::kPassword)
                       : opens(ScratchVolume::kPassword) || opens(kNewPassword);
    }

    QTemporaryDir m_files;
    recovery::SecretKey m_key = recovery::MakeAdministratorKey();
};

PBA_REGISTER_TEST(PowerLossTest);

#include "tst_power_loss.moc"
