// SPDX-License-Identifier: Apache-2.0
// Offline recovery as an administrator sets it up and answers calls; the test is the computer.
#include <sys/stat.h>

#include "admin/appended_line.h"
#include "tests/host/scratch_volume.h"
#include "tests/support/json_report.h"
#include "tests/support/test_main.h"
#include "volume/luks/policy.h"
#include "volume/luks/users.h"
#include "volume/recovery/administrator_key.h"
#include "volume/recovery/challenge.h"
#include "volume/recovery/response.h"
#include "volume/recovery/volume_recovery.h"

using volume::Error;

class RecoveryCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(Admin({"status", "--volume", m_volume}).output, "Recovery:       not set up\n");
        const Outcome made = Admin({"keygen", "--out", m_keys, "--passphrase-stdin", "--json"}, kPassphrase);
        QCOMPARE(made.errors, QByteArray());
        QVERIFY(!(QFileInfo(Secret()).permissions() & (QFile::ReadGroup | QFile::ReadOther)));
        const std::string file = ReadFile(Secret()).toStdString();
        const base::Secret passphrase = MakeSecret("correct horse battery");
        recovery::SecretKey key;
        QVERIFY(recovery::OpenSecretKey(file, passphrase, &key) == recovery::KeyFileFault::None);
        // The same key, but guesses at its passphrase are cheap.
        WriteFile(Secret(), QByteArray::fromStdString(recovery::SealSecretKey(key, passphrase, {1, 8192})));
        QCOMPARE(SetUp("enroll").errors, QByteArray());
        const QByteArray shown = Admin({"status", "--volume", m_volume}).output;
        const std::string fingerprint = recovery::Fingerprint(recovery::PublicKeyOf(key));
        QVERIFY2(shown.contains("not used yet") && shown.contains(fingerprint.c_str()), shown);
        const QJsonDocument status = ReadReport(Admin({"status", "--volume", m_volume, "--json"}).output);
        QVERIFY(status["recovery"] == true && status["used"] == false);
        QCOMPARE(status["administrator"], ReadReport(made.output)["fingerprint"]);
        QCOMPARE(status["administrator"].toString().toStdString(), fingerprint);
    }

    void aCall()
    {
        const Computer computer(m_volume);
        const Outcome answered = Respond(computer.Challenge());
        QCOMPARE(answered.errors, QByteArray());
        QVERIFY(computer.Opens(answered.output, "anna"));
        QVERIFY(!Computer(m_volume).Opens(answered.output, "anna")); // another challenge
        // The same call, written down by somebody in a hurry, and read back word by word.
        QByteArray written = computer.Challenge().toLower().replace('0', 'o').replace('1', "l");
        for (int place : {4, 10, 30})
            written.insert(place, "- ");
        const Outcome again = Respond(written, {"--spell"});
        QCOMPARE(again.errors, QByteArray());
        QVERIFY(again.output.startsWith(answered.output.left(29)) && again.output.count("\n  ") == 10);
        const QJsonDocument report = ReadReport(Respond(computer.Challenge(), {"--json"}).output);
        for (const int row : {0, 1})
            QCOMPARE(report["response"][row].toString().toUtf8(),
                     answered.output.split('\n')[row].mid(9).replace(" ", ""));
        // Another one: whoever has the first response still has the secret.
        QVERIFY(Respond(Computer(m_volume).Challenge()).errors.contains("given out before"));
        QCOMPARE(ReadFile(m_escrow + ".log").count('\n'), 4);
    }

    void aRenewedSecret()
    {
        const Computer before(m_volume);
        const Outcome old = Respond(before.Challenge());
        QCOMPARE(SetUp("renew").errors, QByteArray());
        QVERIFY(!before.Opens(old.output, "anna"));
        // An old copy of the header still opens with the old secret.
        QVERIFY(Respond(before.Challenge()).errors.contains("has been renewed since"));
        const Computer computer(m_volume);
        const Outcome answered = Respond(computer.Challenge());
        QCOMPARE(answered.errors, QByteArray()); // nobody has had this secret
        QVERIFY(computer.Opens(answered.output, "anna"));
    }

    // One waits for the other, and what the second has sealed is what the volume knows.
    void twoAdministratorsAtOnce()
    {
        const QString copy = m_directory.filePath("two.img");
        QVERIFY(QFile::copy(m_volume, copy));
        QProcess tools[2];
        for (QProcess &tool : tools) {
            const QString escrow = copy + QString::number(&tool - tools);
            tool.start(PBA_ADMIN, QStringList{"recovery"} + SetUpArguments("renew", Public(), escrow, copy));
            tool.write(kPassword);
            tool.closeWriteChannel();
        }
        for (QProcess &tool : tools)
            QVERIFY2(tool.waitForFinished(120000) && tool.exitCode() == 0, tool.readAllStandardError());
        QCOMPARE(RunStandardTool({"luksDump", copy}).output.count("luks2\n"), 3);
        const QByteArray call = kPassphrase + Computer(copy).Challenge();
        const bool first = Admin(RespondArguments("lab-7", copy + "0"), call).exitCode == 0;
        QCOMPARE(Admin(RespondArguments("lab-7", copy + "1"), call).exitCode, first ? 1 : 0);
    }

    // Nothing may change: neither header, nor escrow, nor the files around them.
    void refusals()
    {
        const QByteArrayList right = Computer(m_volume).Challenge().split('\n');
        const QByteArray changed = (right[2].front() == '0' ? '1' : '0') + right[2].mid(1);
        const auto misheard = [&](int string, const QByteArray &heard) {
            QByteArrayList strings = right;
            strings[string] = heard;
            return kPassphrase + strings.join('\n');
        };
        const QStringList respond = RespondArguments("lab-7", m_escrow);
        const std::tuple<const char *, QStringList, QByteArray> rows[] = {
            {"has a recovery already", SetUpArguments("enroll", Public(), m_escrow), kPassword},
            {"wrong password", SetUpArguments("renew", Public(), m_escrow), "no\n"},
            {"not an administrator's public key", SetUpArguments("renew", Secret(), m_escrow), kPassword},
            {"no/escrow: cannot be written", SetUpArguments("renew", Public(), m_keys + "/no/escrow"),
             kPassword},
            {"is no file; name a file", SetUpArguments("renew", Public(), "/dev/null"), kPassword},
            {"recovery.key: exists already", {"keygen", "--out", m_keys, "--passphrase-stdin"}, kPassphrase},
            {"no record of a computer named lab-8", RespondArguments("lab-8", m_escrow), kPassphrase},
            {"wrong passphrase", respond, "correct Horse battery\n"},
            {"ended where string 1", respond, kPassphrase},
            {"string 1 is wrong; it would be right as string 2", respond, misheard(0, right[1])},
            {"string 4 has 15 characters instead of 16", respond, misheard(3, right[3].chopped(1))},
            {"string 3 is wrong", respond, misheard(2, changed)}};
        // But for the number of writes: what was begun is undone.
        const auto state = [this] {
            const QByteArray header = RunStandardTool({"luksDump", m_volume}).output;
            return QDir(m_directory.path()).entryList(QDir::AllEntries).join(' ').toUtf8() +
                   ReadFile(m_escrow) + header.mid(header.indexOf("Metadata"));
        };
        Respond(""); // brings the index up to date
        const QByteArray before = state();
        for (const auto &[says, arguments, input] : rows) {
            CompareFailure(Admin(arguments, input), 1, says);
            QVERIFY2(state() == before, says);
        }
    }

    void theIndexFollowsTheEscrow()
    {
        const QString other = m_directory.filePath("other");
        const QString index = other + ".index";
        const QString log = other + ".log";
        const QString copy = m_directory.filePath("copy.img");
        QVERIFY(QFile::copy(m_volume, copy));
        const auto names = [&](const QString &machine) {
            return Admin(RespondArguments(machine, other), "no\n").errors.contains("passphrase");
        };
        const auto enrol = [&](const QString &machine) {
            return Admin(SetUpArguments("renew", Public(), other, copy, machine), kPassword).exitCode == 0;
        };
        for (const char *machine : {"m-3", "M-1", "b\u00fcro"})
            QVERIFY(enrol(machine));
        QVERIFY(names("m-1") && names("BU\u0308RO") && !names("m-4"));
        QVERIFY(enrol("m-4") && names("m-4"));
        // Lost its end with the power; then an index that did, somebody's editor, and no room for an index.
        WriteFile(other, ReadFile(other) + "{\"machine\":\"m-5");
        QVERIFY(enrol("m-6") && names("m-6") && names("m-3") && !names("m-5"));
        QVERIFY(QFile::resize(index, QFileInfo(index).size() - 8) && names("m-6")); // it has the last place
        QVERIFY(QFile::resize(other, QFileInfo(other).size() - 1) && names("m-6"));
        QVERIFY(QFile::resize(index, 1ll << 40) && names("m-3"));
        // What is in the place of index and log is neither waited for nor read for hours.
        const auto call = [&] {
            return Admin(RespondArguments("m-6", other), kPassphrase + Computer(copy).Challenge());
        };
        QVERIFY(QFile::remove(index) && mkfifo(qPrintable(index), 0600) == 0);
        const Outcome answered = call();
        QVERIFY2(answered.exitCode == 0 && answered.errors.contains("index: is no file"), answered.errors);
        QVERIFY(QFile::remove(index) && QFile::resize(log, 1ll << 40));
        CompareFailure(call(), 1, "other.log: larger than 4 GiB");
        QVERIFY(QFile::remove(log) && mkfifo(qPrintable(log), 0600) == 0);
        CompareFailure(call(), 1, "other.log: is no file");
        QVERIFY(QFile::resize(other, 1ll << 40));
        CompareFailure(call(), 1, "other: larger than 4 GiB");
    }

    void aLineThatIsTakenBack()
    {
        const QString file = m_directory.filePath("lines");
        const auto append = [&](const char *line) { admin::AppendedLine(file.toStdString(), line); };
        append("first");
        QVERIFY(!QFile::exists(file)); // it was not there before
        admin::AppendedLine(file.toStdString(), "second").Keep();
        append("third");
        QCOMPARE(ReadFile(file), "second\n");
    }

    // After a loss of power there is no key, or what is missing of it can be had.
    void keysInTheMaking()
    {
        bool half = false;
        int exitCode = kPowerLost;
        for (int moment = 1; exitCode == kPowerLost; ++moment) {
            const QString keys = m_directory.filePath("keys" + QString::number(moment));
            const auto make = [&](const char *command, const char *option) {
                return QStringList{PBA_ADMIN, "recovery", command, option, keys, "--passphrase-stdin"};
            };
            const QStringList keygen = make("keygen", "--out");
            exitCode = RunUntil(moment, m_directory.path(), keygen, kPassphrase).exitCode;
            const QStringList files = QDir(keys).entryList(QDir::Files);
            if (files == QStringList("recovery.key")) {
                half = true;
                CompareFailure(RunUntil(0, keys, keygen, kPassphrase), 1, "without its recovery.pub");
                QCOMPARE(RunUntil(0, keys, make("pubkey", "--key"), kPassphrase).errors, QByteArray());
            }
            QVERIFY(files.isEmpty() || ReadFile(keys + "/recovery.pub").contains("fingerprint"));
        }
        QVERIFY(half && exitCode == 0);
    }

    // Written by the first version; the header without the areas of its keyslots.
    void filesOfTheFirstVersion()
    {
        const QString volume = m_directory.filePath("frozen.img");
        const QString escrow = m_directory.filePath("frozen");
        WriteFile(volume, qUncompress(ReadFile(FROZEN "header.z")));
        QVERIFY(QFile::resize(volume, 20 * 1024 * 1024) && QFile::copy(FROZEN "escrow", escrow));
        const Computer computer(volume);
        const std::vector<volume::User> users = volume::UsersOf(*computer.opened);
        QVERIFY(users.size() == 2 && users[0].name == (volume::UserName{"", "anna"}) && users[0].changed);
        QVERIFY(users[1].name == (volume::UserName{"B\u00dcRO", "boris"}));
        QVERIFY(users[0].keyslots == std::vector{0} && users[1].keyslots == std::vector{1});
        QVERIFY(volume::PolicyOf(*computer.opened) == (volume::Policy{12, false, 90, false, 3, 60}));
        QVERIFY(computer.found->enrolment.keyslots == std::vector{2} && !computer.found->enrolment.used);

        const Outcome answered = Admin({"respond", "--key", FROZEN, "--escrow", escrow, "--machine", "lab-7",
                                        "--user", "anna", "--passphrase-stdin"},
                                       kPassphrase + computer.Challenge());
        QCOMPARE(answered.errors, QByteArray());
        QVERIFY(computer.Read(answered.output)->FindUser(users) == users[0].name);
    }

private:
    static inline const QByteArray kPassword = QByteArray(ScratchVolume::kPassword) + "\n";
    static constexpr char kPassphrase[] = "correct horse battery\n";

    // What the host does with the volume.
    struct Computer
    {
        explicit Computer(const QString &path)
        {
            if (volume::Header::Open(path.toStdString(), &opened) != Error::None)
                qFatal("no volume");
            found = recovery::Find(*opened);
        }
        QByteArray Challenge() const
        {
            QByteArray lines;
            const auto challenge =
                recovery::MakeChallenge(found->enrolment.identity, recovery::PublicKeyOf(ephemeral));
            for (const std::string &string : recovery::EncodeChallenge(challenge))
                lines += string + "\n";
            return lines;
        }
        // Takes the strings as they are printed.
        std::optional<recovery::Response> Read(const QByteArray &printed) const
        {
            recovery::ResponseLines lines;
            const QByteArrayList rows = printed.split('\n');
            for (std::size_t row = 0; row < lines.size(); ++row)
                lines[row] = *base::NormaliseCode(rows[static_cast<int>(row)].mid(9).toStdString());
            return recovery::Response::Open(ephemeral, found->enrolment, lines);
        }
        bool Opens(const QByteArray &printed, const char *user) const
        {
            const auto response = Read(printed);
            const auto name = response ? response->FindUser(volume::UsersOf(*opened)) : std::nullopt;
            return name && name->user == user &&
                   opened->OpenKeyslot(found->enrolment.keyslots.front(),
                                       recovery::PassphraseOf(response->Secret()), nullptr) == Error::None;
        }

        std::unique_ptr<volume::Header> opened;
        std::optional<recovery::Found> found;
        recovery::SecretKey ephemeral = recovery::MakeEphemeral({});
    };

    QString Public() const { return m_keys + "/recovery.pub"; }
    QString Secret() const { return m_keys + "/recovery.key"; }
    static Outcome Admin(const QStringList &arguments, const QByteArray &input = {})
    {
        return Run(PBA_ADMIN, QStringList{"recovery"} + arguments, input);
    }
    QStringList SetUpArguments(const QString &command, const QString &key, const QString &escrow,
                               const QString &volume = {}, const QString &machine = "lab-7") const
    {
        return {command,
                "--volume=" + (volume.isEmpty() ? m_volume : volume),
                "--admin-key=" + key,
                "--escrow=" + escrow,
                "--machine=" + machine,
                "--password-stdin"};
    }
    Outcome SetUp(const QString &command) const
    {
        return Admin(SetUpArguments(command, Public(), m_escrow), kPassword);
    }
    QStringList RespondArguments(const QString &machine, const QString &escrow) const
    {
        return {"respond",   "--key", m_keys,   "--escrow", escrow,
                "--machine", machine, "--user", "anna",     "--passphrase-stdin"};
    }
    Outcome Respond(const QByteArray &challenge, const QStringList &options = {}) const
    {
        return Admin(RespondArguments("LAB-7", m_escrow) + options, kPassphrase + challenge);
    }

    ScratchVolume m_scratch;
    QTemporaryDir m_directory;
    QString m_volume = QString::fromStdString(m_scratch.Path());
    QString m_keys = m_directory.filePath("keys");
    QString m_escrow = m_directory.filePath("escrow");
};

PBA_REGISTER_TEST(RecoveryCommandsTest);

#include "tst_recovery_commands.moc"
