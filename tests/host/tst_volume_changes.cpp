// SPDX-License-Identifier: Apache-2.0
// Changes to users, passwords and policy on real LUKS2 files. What a loss of power leaves is in tests/admin.
#include "tests/host/scratch_volume.h"
#include "tests/support/test_main.h"
#include "volume/luks/policy.h"
#include "volume/luks/users.h"

using volume::Error;

namespace {

const volume::UserName kAnna{"", "anna"};
const volume::UserName kBoris{"OFFICE", "boris"};
const volume::KeyCost kCost = volume::KeyCost::ForRandomSecret();

// Another tool, whose keyslots no object names.
struct Stranger final : volume::KeyslotOwner
{
    Error Announce(int, const volume::KeyCost &) override { return Error::None; }
    Error Accept(int its) override { return keyslot = its, Error::None; }
    Error Withdraw() override { return Error::None; }
    int keyslot = -1;
};

// An opened volume and its key.
struct Opened
{
    explicit Opened(const ScratchVolume &scratch)
        : volume(scratch.Open())
    {
        if (volume->Authorise(MakeSecret(ScratchVolume::kPassword), &key) != Error::None)
            qFatal("not authorised");
    }
    Error Replace(const volume::UserName &name, std::string_view password,
                  volume::WhenFull whenFull = volume::WhenFull::Refuse)
    {
        return volume::Users(*volume).ReplacePassword(name, key, MakeSecret(password), kCost, whenFull);
    }
    int AddKeyslot(std::string_view passphrase, const volume::KeyCost &cost = kCost)
    {
        Stranger stranger;
        return volume->AddKeyslot(key, MakeSecret(passphrase), cost, stranger) == Error::None
                   ? stranger.keyslot
                   : -1;
    }
    Error Add(const volume::UserName &name, std::string_view password)
    {
        return volume::Users(*volume).Add(name, key, MakeSecret(password), kCost);
    }
    // As another program would write it. The parts are JSON.
    bool WriteObject(const std::string &type, const std::string &keyslots, const std::string &filler) const
    {
        int number = -1;
        const std::string json =
            "{\"type\":\"" + type + "\",\"keyslots\":[" + keyslots + "],\"filler\":\"" + filler + "\"}";
        return volume->WriteObject(json, &number) == Error::None;
    }
    std::unique_ptr<volume::Header> volume;
    base::Secret key;
};

} // namespace

class VolumeChangesTest : public QObject
{
    Q_OBJECT

private slots:
    void aPasswordIsReplaced()
    {
        const ScratchVolume scratch;
        Opened opened(scratch);
        QCOMPARE(opened.Replace(kAnna, "new one"), Error::None);
        QCOMPARE(scratch.Login(kAnna, ScratchVolume::kPassword), Error::WrongPassword);
        QCOMPARE(scratch.Login(kAnna, "new one"), Error::None);
        QVERIFY(volume::FindUser(*scratch.Open(), kAnna)->changed);
        QCOMPARE(opened.volume->Keyslots().size(), 2u);

        QCOMPARE(opened.Replace({"", "carl"}, "x"), Error::NoUser);
        opened.key.Buffer()[0] ^= 1; // not the volume's key any more
        QCOMPARE(opened.Replace(kAnna, "x", volume::WhenFull::DropOld), Error::WrongPassword);
        QCOMPARE(scratch.Login(kAnna, "new one"), Error::None);
        QVERIFY(!volume::FindUser(*scratch.Open(), kAnna)->pending);
    }

    // Two views of one header, as two programs have them: the second one looks anew before it writes.
    void aChangeStartsFromWhatTheHeaderHoldsNow()
    {
        const ScratchVolume scratch;
        Opened first(scratch);
        Opened second(scratch);
        QCOMPARE(first.Add({"", "carl"}, "c"), Error::None);
        QCOMPARE(second.Add({"", "dora"}, "d"), Error::None);
        QCOMPARE(second.Add({"", "carl"}, "e"), Error::UserExists);
        QCOMPARE(scratch.Login({"", "carl"}, "c"), Error::None);
        {
            volume::WriteLock lock;
            QCOMPARE(lock.Take(scratch.Path()), Error::None);
            QCOMPARE(scratch.Login(kAnna, ScratchVolume::kPassword), Error::None);
            QCOMPARE(first.Add({"", "emil"}, "e"), Error::Busy);
        }
        QCOMPARE(first.Add({"", "emil"}, "e"), Error::None);
    }

    void aFullHeader()
    {
        const ScratchVolume scratch;
        Opened opened(scratch);
        const std::string longName(256, '"'); // takes the most when it is written
        Error error = Error::None;
        for (int i = 0; error == Error::None; ++i)
            error = opened.Add({longName, std::to_string(i)}, "p");
        QCOMPARE(error, Error::NoSpace);
        QCOMPARE(volume::UsersOf(*opened.volume).size(), 31u);
        QVERIFY(volume::Fits(volume::kReserve, opened.volume->RoomLeft()));
        QCOMPARE(opened.Replace({longName, "28"}, "new"), Error::None);
        QCOMPARE(scratch.Login({longName, "28"}, "new"), Error::None);

        // Another tool takes the last keyslot.
        QVERIFY(opened.AddKeyslot("r") >= 0);
        QCOMPARE(opened.Replace(kAnna, "new"), Error::NoSpace);
        QCOMPARE(scratch.Login(kAnna, ScratchVolume::kPassword), Error::None);
        QCOMPARE(opened.Replace(kAnna, "new", volume::WhenFull::DropOld), Error::None);
        QCOMPARE(scratch.Login(kAnna, "new"), Error::None);
        QVERIFY(scratch.Login(kAnna, ScratchVolume::kPassword) == Error::WrongPassword);
    }

    // The default header has 12 KiB for its text, and objects that fill it may be anybody's.
    void aHeaderFullOfText()
    {
        const ScratchVolume scratch;
        Opened opened(scratch);
        QVERIFY(opened.WriteObject("x", "", std::string(opened.volume->RoomLeft().bytes - 1300, 'x')));
        QCOMPARE(opened.Add({"", "carl"}, "c"), Error::NoSpace);
        QCOMPARE(opened.Replace(kAnna, "new"), Error::None);
        QVERIFY(opened.WriteObject("x", "", std::string(1150, 'x')));
        QCOMPARE(opened.Replace(kAnna, "newer"), Error::NoSpace);
        QCOMPARE(scratch.Login(kAnna, "new"), Error::None);
        QVERIFY(!volume::FindUser(*scratch.Open(), kAnna)->pending);
        QCOMPARE(opened.volume->Keyslots().size(), 2u);
    }

    void theLastWayInStays()
    {
        const ScratchVolume scratch;
        Opened opened(scratch);
        const int recovery = opened.AddKeyslot("r");
        QVERIFY(opened.WriteObject("pba-recovery", '"' + std::to_string(recovery) + '"', ""));
        QCOMPARE(volume::Users(*opened.volume).Remove(kBoris), Error::None);
        QCOMPARE(scratch.Login(kBoris, ScratchVolume::kOtherPassword), Error::WrongPassword);
        QCOMPARE(volume::Users(*opened.volume).Remove(kAnna), Error::LastWayIn);
        QCOMPARE(opened.volume->RemoveKeyslot(0), Error::LastWayIn);
        QCOMPARE(scratch.Login(kAnna, ScratchVolume::kPassword), Error::None);
        // A passphrase of another tool is a way in.
        const int foreign = opened.AddKeyslot("f");
        QCOMPARE(volume::Users(*opened.volume).Remove(kAnna), Error::None);
        QCOMPARE(volume::Users(*opened.volume).Remove(kAnna), Error::NoUser);
        QCOMPARE(opened.volume->RemoveKeyslot(recovery), Error::None);
        QCOMPARE(opened.volume->OpenKeyslot(foreign, MakeSecret("f"), nullptr), Error::None);
    }

    // Another tool took the number that a change had in mind before the power went, or somebody's object
    // names what is another's.
    void aForeignKeyslotStays()
    {
        const ScratchVolume scratch;
        Opened opened(scratch);
        const int rescue = opened.AddKeyslot("rescue", volume::KeyCost::ForPassword(1));
        volume::User anna = volume::FindUser(*opened.volume, kAnna).value();
        const int boriss = volume::FindUser(*opened.volume, kBoris)->keyslots[0];
        volume::User carl{{"", "carl"}, {}, rescue, true, {}, kCost.ToText()};
        volume::User shares = anna;
        volume::User leads = anna;
        volume::User pends = anna;
        shares.keyslots.push_back(boriss);
        leads.keyslots.insert(leads.keyslots.begin(), boriss);
        pends.pending = boriss;
        pends.pendingCost = kCost.ToText();
        for (volume::User *user : {&carl, &shares, &leads, &pends}) {
            QCOMPARE(opened.volume->WriteObject(volume::EncodeUser(*user), &user->object), Error::None);
            QCOMPARE(volume::Users(*opened.volume).FinishPending(), Error::None);
            QCOMPARE(scratch.Login(kAnna, ScratchVolume::kPassword), Error::None);
            QCOMPARE(scratch.Login(kBoris, ScratchVolume::kOtherPassword), Error::None);
            QCOMPARE(scratch.Open()->OpenKeyslot(rescue, MakeSecret("rescue"), nullptr), Error::None);
        }
        QVERIFY(!volume::FindUser(*opened.volume, kAnna)->pending &&
                !volume::FindUser(*opened.volume, carl.name));
        QCOMPARE(opened.volume->WriteObject(volume::EncodeUser(shares), &shares.object), Error::None);
        QCOMPARE(volume::Users(*opened.volume).Remove(kAnna), Error::None);
        QCOMPARE(scratch.Login(kBoris, ScratchVolume::kOtherPassword), Error::None);
    }

    void thePolicy()
    {
        const ScratchVolume scratch;
        const auto opened = scratch.Open();
        const auto check = [&](std::string_view password) {
            return volume::Users(*opened).CheckNewPassword(kAnna, MakeSecret(password));
        };
        QCOMPARE(check("\u00e4\u00e4\u00e4\u00e4"), Error::PasswordTooShort); // characters count, not bytes
        QCOMPARE(check("12345678"), Error::None);
        QCOMPARE(check(ScratchVolume::kPassword), Error::PasswordUnchanged);

        volume::Policy policy{1, false, 30, false, 2, 0};
        for (int times = 0; times < 2; ++times) // the second takes the place of the first
            QCOMPARE(volume::SetPolicy(*opened, policy), Error::None);
        QCOMPARE(volume::PolicyOf(*scratch.Open()), policy);
        QCOMPARE(opened->Objects(volume::kPolicyObjectType).size(), 1u);
        QCOMPARE(check(ScratchVolume::kPassword), Error::None);

        constexpr std::int64_t kDay = 24 * 60 * 60;
        const auto expired = [&](std::optional<std::int64_t> changed, std::int64_t now) {
            return volume::HasExpired(policy, {kAnna, {}, {}, false, changed}, now);
        };
        QVERIFY(expired({}, kDay) && !expired(100 * kDay, 130 * kDay - 1) && expired(100 * kDay, 130 * kDay));
        policy.expiryDays = 0;
        QVERIFY(!expired({}, 9999 * kDay));
        const auto odd = volume::DecodePolicy(
            R"({"type":"pba-policy","minimumLength":128,"delaySeconds":-1,"notOldPassword":0,"expiryDays":9})");
        QVERIFY(odd == volume::Policy{.expiryDays = 9});
    }
};

PBA_REGISTER_TEST(VolumeChangesTest);

#include "tst_volume_changes.moc"
