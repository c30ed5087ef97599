// Offline recovery as an administrator sets it up and answers calls; the test is the computer.
#include "../host/scratch_volume.h"
#include "recovery/administrator_key.h"
#include "recovery/challenge.h"
#include "recovery/response.h"
#include "recovery/volume_recovery.h"
#include "run_program.h"
#include "test_main.h"

using volume::Error;

class RecoveryCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(Admin({"status", "--volume", m_volume}).output, "Recovery:       not set up\n");
        QCOMPARE(Admin({"keygen", "--out", m_keys, "--passphrase-stdin"}, kPassphrase).errors, QByteArray());
        QVERIFY(!(QFileInfo(Secret()).permissions() & (QFile::ReadGroup | QFile::ReadOther)));
        const std::string file = ReadFile("keys/recovery.key").toStdString();
        const volume::Secret passphrase = MakeSecret("correct horse battery");
        recovery::SecretKey key;
        QVERIFY(recovery::OpenSecretKey(file, passphrase, &key) == recovery::KeyFileFault::None);
        // The same key, but guesses at its passphrase are cheap.
        QFile cheap(Secret());
        QVERIFY(cheap.open(QFile::WriteOnly | QFile::Truncate));
        cheap.write(QByteArray::fromStdString(recovery::SealSecretKey(key, passphrase, {1, 8192})));
        cheap.close();
        QCOMPARE(SetUp("enroll").errors, QByteArray());
        const QByteArray shown = Admin({"status", "--volume", m_volume}).output;
        const std::string fingerprint = recovery::Fingerprint(recovery::PublicKeyOf(key));
        QVERIFY2(shown.contains("not used yet") && shown.contains(fingerprint.c_str()), shown);
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
        // Another one: whoever has the first response still has the secret.
        QVERIFY(Respond(Computer(m_volume).Challenge()).errors.contains("given out before"));
        QCOMPARE(ReadFile("escrow.log").count('\n'), 3);
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
        const QByteArray dump = RunStandardTool({"luksDump", m_volume}).output;
        QVERIFY2(dump.count("luks2\n") == 3, dump);
    }

    // One waits for the other, and what the second has sealed is what the volume knows.
    void twoAdministratorsAtOnce()
    {
        const QString copy = m_directory.filePath("two.img");
        QVERIFY(QFile::copy(m_volume, copy));
        const QString escrows[] = {copy + "1", copy + "2"};
        QProcess tools[2];
        for (int i : {0, 1}) {
            tools[i].start(PBA_ADMIN,
                           QStringList{"recovery"} + SetUpArguments("renew", Public(), escrows[i], copy));
            tools[i].write(kPassword);
            tools[i].closeWriteChannel();
        }
        for (QProcess &tool : tools)
            QVERIFY2(tool.waitForFinished() && tool.exitCode() == 0, tool.readAllStandardError());
        QCOMPARE(RunStandardTool({"luksDump", copy}).output.count("luks2\n"), 3);
        const QByteArray call = kPassphrase + Computer(copy).Challenge();
        const bool first = Admin(RespondArguments("lab-7", escrows[0]), call).exitCode == 0;
        QCOMPARE(Admin(RespondArguments("lab-7", escrows[1]), call).exitCode, first ? 1 : 0);
    }

    void misheardStrings()
    {
        const QByteArrayList right = Computer(m_volume).Challenge().split('\n');
        const QByteArray changed = (right[2].front() == '0' ? '1' : '0') + right[2].mid(1);
        const struct
        {
            int string;
            QByteArray misheard;
            const char *says;
        } rows[] = {{0, right[1], "string 1 is wrong; it would be right as string 2"},
                    {3, right[3].chopped(1), "string 4 has 15 characters instead of 16"},
                    {1, "U", "string 2 has a character that is none"},
                    {2, changed, "string 3 is wrong"}};
        for (const auto &row : rows) {
            QByteArrayList strings = right;
            strings[row.string] = row.misheard;
            CompareFailure(Respond(strings.join('\n')), 1, row.says);
        }
        CompareFailure(Respond(""), 1, "ended where string 1");
    }

    // Nothing may change: neither header, nor escrow, nor the files around them.
    void refusals()
    {
        const auto in = [this](const char *name) { return m_directory.filePath(name); };
        const struct
        {
            const char *says;
            QStringList arguments;
            QByteArray input;
        } rows[] = {
            {"has a recovery already", SetUpArguments("enroll", Public(), m_escrow), kPassword},
            {"wrong password", SetUpArguments("renew", Public(), m_escrow), "no\n"},
            {"not an administrator's public key", SetUpArguments("renew", Secret(), m_escrow), kPassword},
            {"no/escrow: cannot be written", SetUpArguments("renew", Public(), in("no/escrow")), kPassword},
            {"is no file; name a file", SetUpArguments("renew", Public(), "/dev/null"), kPassword},
            {"recovery.key: exists already", {"keygen", "--out", m_keys, "--passphrase-stdin"}, kPassphrase},
            {"at least 12 characters", {"keygen", "--out", in("k"), "--passphrase-stdin"}, "too short\n"},
            {"no record of a computer named lab-8", RespondArguments("lab-8", m_escrow), kPassphrase},
            {"none/escrow: cannot be read", RespondArguments("lab-7", in("none/escrow")), kPassphrase},
            {"wrong passphrase", RespondArguments("lab-7", m_escrow), "correct Horse battery\n"},
            {"--machine: must be UTF-8", RespondArguments("a\nb", m_escrow), kPassphrase}};
        // But for the number of writes: what was begun is undone.
        const auto state = [this] {
            const QByteArray header = RunStandardTool({"luksDump", m_volume}).output;
            return QDir(m_directory.path()).entryList(QDir::AllEntries).join(' ').toUtf8() +
                   ReadFile("escrow") + header.mid(header.indexOf("Metadata"));
        };
        Respond(""); // brings the index up to date
        const QByteArray before = state();
        for (const auto &row : rows) {
            CompareFailure(Admin(row.arguments, row.input), row.says[0] == '-' ? 2 : 1, row.says);
            QVERIFY2(state() == before, row.says);
        }
    }

    void theIndexFollowsTheEscrow()
    {
        const QString other = m_directory.filePath("other");
        const QString copy = m_directory.filePath("copy.img");
        QVERIFY(QFile::copy(m_volume, copy));
        const auto names = [&](const QString &machine) {
            return Admin(RespondArguments(machine, other), "wrong passphrase\n")
                .errors.contains("passphrase");
        };
        const auto enrol = [&](const QString &machine) {
            return Admin(SetUpArguments("renew", Public(), other, copy, machine), kPassword).exitCode == 0;
        };
        for (const char *machine : {"m-3", "M-1", "b\u00fcro", "m-2"})
            QVERIFY(enrol(machine));
        QVERIFY(names("m-1") && names("BU\u0308RO") && !names("m-4"));
        QVERIFY(enrol("m-4") && names("m-4"));
        // Lost its end with the power; then somebody's editor, an index of rubbish, a directory without room.
        QFile file(other);
        QVERIFY(file.open(QFile::Append) && file.write("{\"machine\":\"m-5") > 0);
        file.close();
        QVERIFY(enrol("m-6") && names("m-6") && names("m-3") && !names("m-5"));
        QFile index(other + ".index");
        QVERIFY(index.open(QFile::ReadWrite) && index.resize(index.size() - 8)); // m-6 has the last place
        index.close();
        QVERIFY(names("m-6"));
        QVERIFY(file.resize(file.size() - 1) && names("m-6"));
        QVERIFY(QFile::remove(other + ".index") && QDir(m_directory.path()).mkdir("other.index"));
        const Outcome without = Admin(RespondArguments("m-2", other), "no\n");
        QVERIFY(without.errors.contains("reads the whole escrow") && without.errors.contains("passphrase"));
    }

private:
    static inline const QByteArray kPassword = QByteArray(ScratchVolume::kPassword) + "\n";
    static constexpr char kPassphrase[] = "correct horse battery\n";

    // What the host does with the volume.
    struct Computer
    {
        explicit Computer(const QString &path)
        {
            if (volume::Volume::Open(path.toStdString(), &opened) != Error::None)
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
        bool Opens(const QByteArray &printed, const char *user) const
        {
            recovery::ResponseLines lines;
            const QByteArrayList rows = printed.split('\n');
            for (std::size_t row = 0; row < lines.size(); ++row)
                lines[row] = *recovery::NormaliseCode(rows[static_cast<int>(row)].mid(9).toStdString());
            const auto response = recovery::Response::Open(ephemeral, found->enrolment, lines);
            const auto name = response ? response->FindUser(opened->Users()) : std::nullopt;
            return name && name->user == user &&
                   opened->OpenKeyslot(found->enrolment.keyslots.front(),
                                       recovery::PassphraseOf(response->Secret()), nullptr) == Error::None;
        }

        std::unique_ptr<volume::Volume> opened;
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
    QByteArray ReadFile(const char *name) const
    {
        QFile file(m_directory.filePath(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    ScratchVolume m_scratch;
    QTemporaryDir m_directory;
    QString m_volume = QString::fromStdString(m_scratch.Path());
    QString m_keys = m_directory.filePath("keys");
    QString m_escrow = m_directory.filePath("escrow");
};

PBA_REGISTER_TEST(RecoveryCommandsTest);

#include "tst_recovery_commands.moc"
