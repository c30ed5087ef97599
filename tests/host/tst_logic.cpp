// SPDX-License-Identifier: Apache-2.0
// The host's answers to the view, on a real volume and with a view that records.
#include <QCryptographicHash>

#include "tests/host/host_on_volume.h"
#include "settings_format/settings_encoder.h"
#include "tests/support/test_main.h"
#include "volume/luks/policy.h"
#include "volume/luks/users.h"

namespace {

constexpr char16_t kRight[] = u"r\u00e4tsel 42";

const std::string kWrong = "Wrong user name or password";
const std::string kWait = "Too many failed attempts";

struct Host : HostOnVolume<SilentView>
{
    using HostOnVolume::HostOnVolume;
    kro::result_t Login(const char16_t *domain, const char16_t *user, const char16_t *password)
    {
        return view.logic->Login(domain, user, password);
    }
};

QByteArray Settings(std::uint32_t layout, const char16_t *name)
{
    pba::ConstantSettingsRecord record;
    record.prebootSettings.inputLanguages = {{1033, u"English", {{layout, name, {}}}}};
    return QByteArray::fromStdString(pba::EncodeSettings(record));
}

// As on a volume from a computer with more memory than any has.
void AskForTooMuchMemory(const QString &path)
{
    constexpr qsizetype kCopyBytes = 64 * 1024;
    constexpr qsizetype kChecksum = 0x1c0;
    QFile file(path);
    QVERIFY(file.open(QFile::ReadWrite));
    for (const qsizetype start : {qsizetype(0), kCopyBytes}) {
        QVERIFY(file.seek(start));
        QByteArray copy = file.read(kCopyBytes);
        copy.replace(R"("type":"pbkdf2","hash":"sha512","iterations":1000)",
                     R"("type":"argon2id","time":4,"memory":2147483647,"cpus":1)");
        copy.truncate(kCopyBytes);
        copy.replace(kChecksum, 64, QByteArray(64, '\0'));
        copy.replace(kChecksum, 32, QCryptographicHash::hash(copy, QCryptographicHash::Sha256));
        QVERIFY(file.seek(start) && file.write(copy) == kCopyBytes);
    }
}

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
        QCOMPARE(host.view.TakeCalls(), (Calls{"LoggedIn", kWrong, "SelectPassword"}));
        QCOMPARE(host.Login(u"OFFICE", u"boris", u"paper boat"), kro::kOk);
        QVERIFY(!host.unlockSession.HasStarted());
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kOk);
        QCOMPARE(host.view.TakeCalls(), (Calls{"LoggedIn", "StartingOs", "Close"}));
        QVERIFY(host.unlockSession.HasStarted() && !host.unlockSession.HasTestBootEnded());
    }

    // A known user and a stranger are answered alike, but for what the keyboard has to do with it.
    void aRefusedLogin()
    {
        const std::tuple<const char16_t *, std::uint32_t, bool, QString> rows[] = {
            {u"anna", 0x407, false, "\n\nThe keyboard layout is German."},
            {u"carl", 0xABCD, false, ""}, // an unknown one
            {u"carl", 0x407, true, "\n\nThe keyboard layout is German. Caps Lock is on."},
            {u"anna", 0x409, false, "\n\nThe keyboard layout is Am\u00e9ricain."}, // as the selector calls it
        };
        for (const auto &[user, layout, capsLock, hint] : rows) {
            Host host(m_scratch);
            fake_pbe::WriteFile(u"\\pba\\settings.bin", Settings(0x409, u"Am\u00e9ricain"));
            fake_pbe::SetKeyboard(layout, capsLock);
            host.view.duringMessage = [] {
                QCOMPARE(fake_pbe::Calls(), (QList<QByteArray>{"busy on", "busy off"}));
            };
            QCOMPARE(host.Login(u"", user, u"Oops-secret"), kro::kOk);
            QCOMPARE(host.view.TakeCalls(), (Calls{kWrong, "SelectPassword"}));
            QCOMPARE(host.opened->DerivationCount(), 1u);
            const QString text = QString::fromStdU16String(host.view.lastText);
            QCOMPARE(text.mid(text.indexOf(u'.', text.indexOf("Caps Lock")) + 1), hint);
            QVERIFY(!fake_pbe::LogText().contains("Oops"));
            QVERIFY(!fake_pbe::LogText().contains(QString::fromUtf16(user).toUtf8()));
        }
    }

    void guessingIsSlowedDown()
    {
        const ScratchVolume scratch;
        Memory memory;
        const auto guess = [&](Host &host, const char16_t *password = u"wrong") {
            const unsigned before = host.opened->DerivationCount();
            std::vector<unsigned> atWriting;
            memory.atWriting = [&] { atWriting.push_back(host.opened->DerivationCount()); };
            host.Login(u"", u"anna", password);
            // Counted before it is tried, so that ending the program in between gains nothing.
            [&] { QVERIFY(atWriting.empty() || atWriting.front() == before); }();
            memory.atWriting = [] {};
            return std::pair(host.view.TakeCalls().front(), host.opened->DerivationCount() - before);
        };
        const std::pair wrong(kWrong, 1u);
        const std::pair wait(kWait, 0u);
        const volume::Policy policy;
        for (unsigned failures = 0; failures <= policy.freeAttempts; ++failures) {
            Host host(scratch, {}, &memory); // each in a program of its own
            QCOMPARE(guess(host), wrong);
        }
        Host host(scratch, {}, &memory);
        QCOMPARE(guess(host, kRight), wait);
        QVERIFY(host.view.lastText.ends_with(u": 30."));
        memory.date += 1'000'000; // whatever is done to the clock meanwhile
        memory.sinceBoot += 29;
        QCOMPARE(guess(host), wait);
        QVERIFY(host.view.lastText.ends_with(u": 1."));
        memory.sinceBoot += 1;
        QCOMPARE(guess(host), wrong);
        QCOMPARE(guess(host), wait);
        memory.date -= 2'000'000; // set back, it neither ends the next start's delay nor draws it out
        Host other(scratch, {}, &memory);
        QCOMPARE(guess(other), wait);
        memory.sinceBoot += 30;
        QCOMPARE(guess(other), wrong);
        QCOMPARE(guess(host), wait); // two at once count together
        memory.sinceBoot += 30;
        QCOMPARE(guess(host, kRight), std::pair(std::string("LoggedIn"), 1u));
        QCOMPARE(guess(other), wrong);
        QCOMPARE(memory.state.failures, 1u);

        // What nobody is to blame for does not count.
        QVERIFY(QFile::remove(QString::fromStdString(scratch.Path())));
        QCOMPARE(guess(other).second, 1u);
        QCOMPARE(memory.state.failures, 1u);
    }

    // Each from its real cause, in words that tell it from the others.
    void theDiskIsToBlame()
    {
        struct Case
        {
            bool wantsMemory;
            int sizeAfter;
            const char *says;
        };
        for (const auto &[wantsMemory, sizeAfter, says] :
             {Case{false, 0, "The encrypted disk has been removed."},
              Case{false, 0x20000, "The encrypted disk reports errors"},
              Case{true, 0x1000000, "There is not enough memory"}}) {
            const ScratchVolume scratch;
            const QString path = QString::fromStdString(scratch.Path());
            if (wantsMemory)
                AskForTooMuchMemory(path);
            Host host(scratch);
            QVERIFY(sizeAfter > 0 ? QFile::resize(path, sizeAfter) : QFile::remove(path));
            host.Login(u"", u"anna", kRight);
            QVERIFY2(QString::fromStdU16String(host.view.lastText).startsWith(says), says);
        }
    }

    void aMemoryThatCannotBeWrittenLocksNobodyOut()
    {
        Memory memory;
        memory.writable = false;
        memory.state = {1000, memory.date + 1000}; // from before, and from the future
        Host host(m_scratch, {}, &memory);
        host.Login(u"", u"anna", kRight);
        memory.sinceBoot += 30;
        host.Login(u"", u"anna", kRight);
        QCOMPARE(host.view.TakeCalls(), (Calls{kWait, "SelectPassword", "LoggedIn"}));
        for (int failures = 0; failures < 7; ++failures) {
            host.Login(u"", u"anna", u"wrong");
            QCOMPARE(host.view.TakeCalls().front(), failures < 6 ? kWrong : kWait);
        }
        memory.writable = true; // it is written as soon as it can be
        memory.sinceBoot += 30;
        host.Login(u"", u"anna", u"wrong");
        QCOMPARE(memory.state.failures, 7u);
        QCOMPARE(fake_pbe::LogText().count("cannot be kept"), 1);
    }

    // What other programs have done since the start counts at each attempt, and nothing of it is undone.
    void aHeaderThatOthersChange()
    {
        const ScratchVolume scratch;
        Host host(scratch);
        host::HeaderStateStore store(*host.opened);
        host::LoginThrottle throttle(store, host.clock, [] { return volume::Policy(); });
        throttle.BeginAttempt();
        const auto other = scratch.Open();
        base::Secret key;
        QCOMPARE(other->Authorise(MakeSecret(ScratchVolume::kPassword), &key), volume::Error::None);
        const std::string secret = "paper ship";
        const auto cost = volume::KeyCost::ForRandomSecret();
        QCOMPARE(volume::Users(*other).ReplacePassword({"", "anna"}, key, MakeSecret(secret), cost),
                 volume::Error::None);
        QCOMPARE(other->RemoveObject(other->Objects(host::kStateObjectType).at(0).number),
                 volume::Error::None);
        QCOMPARE(volume::Users(*other).Add({"", "carl"}, key, MakeSecret(secret), cost), volume::Error::None);
        host.Login(u"", u"anna", u"paper ship");
        host.Login(u"", u"carl", u"paper ship");
        QCOMPARE(host.view.TakeCalls(), (Calls{"LoggedIn", "LoggedIn"}));
        throttle.BeginAttempt();
        QCOMPARE(store.Read().failures, 1u);
        {
            volume::WriteLock lock; // another program is busy when the next one begins
            QCOMPARE(lock.Take(scratch.Path()), volume::Error::None);
            throttle.BeginAttempt();
            QCOMPARE(store.Read().failures, 1u);
        }
        throttle.FailAttempt();
        QCOMPARE(store.Read().failures, 2u);
        QCOMPARE(scratch.Login({"", "carl"}, secret), volume::Error::None);
    }

    void aPasswordIsChanged()
    {
        const ScratchVolume scratch;
        Host host(scratch);
        pba::ILoginByPasswordLogic &logic = *host.view.logic;
        const auto isOffered = [&] {
            bool allowed = false;
            kro::wstring_t title;
            kro::wstring_t message;
            return logic.GetPasswordChangeInfo(&allowed, &title, &message) == kro::kOk && allowed;
        };
        QVERIFY(!isOffered()); // nobody is logged on
        host.Login(u"office", u"boris", u"paper boat");
        QVERIFY(isOffered());
        kro::wstring_t domain;
        kro::wstring_t user;
        QVERIFY(logic.PrepareChangePassword(&domain, &user) == kro::kOk && domain.View() == u"office" &&
                user.View() == u"boris");
        host.view.TakeCalls();
        for (const char16_t *refused : {u"", u"7 chars", u"paper boat"})
            QCOMPARE(logic.ChangePassword(refused), kro::kOk);
        const std::string tooShort = "The new password is too short";
        QCOMPARE(host.view.TakeCalls(), (Calls{tooShort, tooShort, "The new password is the old one"}));
        fake_pbe::WriteFile(u"\\pba\\settings.bin", Settings(0x407, u"Deutsch"));
        QCOMPARE(logic.ChangePassword(u"\u043b\u043e\u0434\u043a\u0430 \u0442\u0440\u0438"), kro::kOk);
        QVERIFY(host.view.lastText.find(u": Deutsch.") != std::u16string::npos);
        QCOMPARE(host.view.TakeCalls().back(), "LoggedIn");
        QCOMPARE(logic.ChangePassword(u"paper ship"), kro::kOk); // a second one, of letters that all can type
        QCOMPARE(host.view.TakeCalls(), Calls{"LoggedIn"});
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kOk);
        QVERIFY(!fake_pbe::LogText().contains("paper"));
        QVERIFY(QFile::remove(QString::fromStdString(scratch.Path())));
        QVERIFY(!isOffered());
    }

    // Nothing starts with an expired password, unless there is no way to replace it.
    void anExpiredPassword()
    {
        for (const bool writable : {true, false}) {
            const ScratchVolume scratch;
            Host host(scratch);
            pba::ILoginByPasswordLogic &logic = *host.view.logic;
            ScratchVolume::Expire(*host.opened, {});
            host.Login(u"", u"anna", kRight);
            QCOMPARE(host.view.TakeCalls(), Calls{"MustChangePassword"});
            QCOMPARE(logic.CancelChangePassword(), kro::kProhibited);
            QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
            if (!writable) // the disk goes away while the page is up
                QVERIFY(QFile::remove(QString::fromStdString(scratch.Path())));
            QCOMPARE(logic.ChangePassword(u"paper ship"), kro::kOk);
            const Calls stays{"The new password is not saved", "LoggedIn"};
            QCOMPARE(host.view.TakeCalls(), writable ? Calls{"LoggedIn"} : stays);
            QCOMPARE(host.logic.StartOperatingSystem(), kro::kOk);
        }
    }

    // It is never earlier than what was seen before, unless the administrator says so.
    void theDate()
    {
        constexpr std::int64_t kDay = 86400;
        const ScratchVolume scratch;
        Memory memory;
        volume::Policy policy;
        policy.expiryDays = 1;
        const auto login = [&](std::int64_t date, const char16_t *password) {
            memory.date = date;
            [&] { QVERIFY(volume::SetPolicy(*scratch.Open(), policy) == volume::Error::None); }();
            Host host(scratch, {}, &memory);
            host.Login(u"", u"anna", password);
            const std::string answer = host.view.TakeCalls().front();
            host.view.logic->ChangePassword(u"paper ship");
            return answer;
        };
        const std::int64_t today = *volume::FindUser(*scratch.Open(), {"", "anna"})->changed;
        const std::string expired = "MustChangePassword";
        QCOMPARE(login(today + kDay + 60, kRight), expired);
        QCOMPARE(login(today - 100 * kDay, u"paper ship"), "LoggedIn");
        QCOMPARE(*volume::FindUser(*scratch.Open(), {"", "anna"})->changed, today + kDay + 60);
        QCOMPARE(login(today + 30000 * kDay, u"paper ship"), expired);
        policy.clockReset = today + 2 * kDay;
        QCOMPARE(login(today, u"paper ship"), "LoggedIn");
        QCOMPARE(memory.state.seen, policy.clockReset);
    }

    // No device mapper takes such a name, so this fails also where tests may map volumes.
    void aMappingThatFailsStartsNothing()
    {
        Host host(m_scratch, {"no/such/name", false});
        host.Login(u"", u"anna", kRight);
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kUnspecifiedError);
        QCOMPARE(host.view.TakeCalls(), Calls{"LoggedIn"});
        QVERIFY(!host.unlockSession.HasStarted() && fake_pbe::LogText().contains("cannot be mapped"));
    }

    void whatHappensDuringAMessage()
    {
        Host host(m_scratch);
        kro::result_t nested = kro::kOk;
        host.view.duringMessage = [&] { nested = host.Login(u"", u"anna", kRight); };
        QCOMPARE(host.Login(u"", u"anna", u"wrong"), kro::kOk);
        QCOMPARE(nested, kro::kInvalidState);
        QCOMPARE(host.logic.StartOperatingSystem(), kro::kProhibited);
        host.view.duringMessage = [] { throw std::bad_alloc(); }; // does not reach the view
        QCOMPARE(host.Login(u"", u"anna", u"wrong"), kro::kOutOfMemory);
        QCOMPARE(host.Login(u"", u"anna", kRight), kro::kOk); // and the next one is free again
        QCOMPARE(host.view.TakeCalls().back(), "LoggedIn");
    }

private:
    ScratchVolume m_scratch;
};

PBA_REGISTER_TEST(LogicTest);

#include "tst_logic.moc"
