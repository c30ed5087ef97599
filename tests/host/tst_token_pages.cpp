// SPDX-License-Identifier: Apache-2.0
// The answers about tokens, with a service that says what the test wants and a view that records.
#include "host/protocol/server.h"
#include "host/screen/business_logic.h"
#include "tests/host/silent_view.h"
#include "tests/support/fake_pbe.h"
#include "tests/support/memory_channel.h"
#include "tests/support/test_main.h"

using namespace protocol;

namespace {

class TokenView final : public SilentView, public pba::ILoginByTokenView
{
public:
    pba::ILoginByTokenLogic *tokenLogic = nullptr;

    kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &text, std::uint32_t severity,
                              std::uint32_t buttons) override
    {
        return SilentView::ShowMessage(title, text, severity, buttons);
    }
    pba::IMainView *GetMainView() override { return this; }
    using SilentView::SetLogic;
    void SetLogic(pba::ILoginByTokenLogic *logic) override { tokenLogic = logic; }
    kro::result_t ShowLoggedIn() override { return Note("LoggedIn"); }
};

// Whose token page is shown.
struct Scene
{
    Scene()
    {
        fake_pbe::Reset();
        auto [ours, theirs] = MemoryChannel::MakePair();
        theirs->others = [this] {
            while (const auto request = server->Receive())
                std::visit([this](const auto &one) { Answer(one); }, *request);
        };
        server.emplace(std::move(ours));
        client.emplace(std::move(theirs));
        link.emplace(*client);
        logic.emplace(*link, texts);
        if (logic->Init(&view) != kro::kOk || logic->StartLoginByToken(&view) != kro::kOk)
            qFatal("no start");
        view.TakeCalls();
    }
    template <typename Request>
    void Answer(const Request &)
    {
        server->Reply(typename Request::Reply());
    }
    void Answer(const TryToken &request)
    {
        asked = {request.generation, request.index};
        server->Reply(reply);
    }

    // Each list has another number.
    void Tell(std::vector<TokenInfo> tokens)
    {
        server->Tell(Tokens{++generation, std::move(tokens)});
        link->TakeEvents();
    }
    QStringList Names()
    {
        kro::vector_t<pba::TokenRecord> tokens;
        QStringList names;
        if (view.tokenLogic->GetTokens(&tokens) != kro::kOk)
            qFatal("no list");
        for (const pba::TokenRecord &token : tokens)
            names.append(token.name.Data());
        return names;
    }
    bool ScreenMustChange()
    {
        bool change = false;
        return logic->UpdateConnectedTokens(&change) == kro::kOk && change;
    }
    bool IsConnected()
    {
        bool connected = false;
        return logic->CheckTokensConnected(&connected) == kro::kOk && connected;
    }

    std::optional<Server> server;
    std::optional<Client> client;
    std::optional<host::ServiceLink> link;
    host::Texts texts{nullptr};
    TokenView view;
    std::optional<host::BusinessLogic> logic;
    std::uint32_t generation = 0;
    TryTokenReply reply{TokenError::None};
    std::pair<std::uint32_t, int> asked{0, -1};
};

const TokenInfo kAnna{"Anna", "1", true, false};
const TokenInfo kBoris{"Boris", "2", true, true};
const TokenInfo kStranger{"Curve", "3", false, false};

} // namespace

class TokenPagesTest : public QObject
{
    Q_OBJECT

private slots:
    // A half-typed PIN or password survives whatever leaves the screen as it is.
    void theScreenChangesWithTheListOnly()
    {
        Scene scene;
        QVERIFY(!scene.IsConnected());
        scene.Tell({kStranger});
        QVERIFY(!scene.ScreenMustChange() && !scene.IsConnected());
        scene.Tell({kAnna, kBoris, kStranger});
        QVERIFY(scene.ScreenMustChange() && scene.IsConnected());
        QCOMPARE(scene.Names(), (QStringList{"Anna", "Boris (PIN at the reader)", "Curve"}));
        QVERIFY(!scene.ScreenMustChange() && !scene.ScreenMustChange());
        scene.Tell({kAnna, kStranger});
        QVERIFY(scene.ScreenMustChange());
        scene.Tell({kAnna, kBoris, kStranger});
        QVERIFY(!scene.ScreenMustChange());
        scene.Tell({}); // after the screen was chosen, before its list was asked for
        QCOMPARE(scene.Names(), QStringList());
        QVERIFY(scene.ScreenMustChange() && !scene.IsConnected() && !scene.ScreenMustChange());
        QCOMPARE(scene.view.TakeCalls(), Calls());
        QCOMPARE(fake_pbe::Calls(), (QList<QByteArray>{"tokens added", "tokens added", "tokens removed",
                                                       "tokens added", "tokens removed"}));
    }

    // The service finds by the number of the list which token stood at the place.
    void thePinGoesToTheTokenThatWasShown()
    {
        Scene scene;
        const auto login = [&](int index) { return scene.view.tokenLogic->LoginByToken(index, "7315"); };
        QCOMPARE(login(0), kro::kInvalidArgument);
        scene.Tell({kAnna, kBoris});
        scene.Names();
        for (const int index : {-1, 2})
            QCOMPARE(login(index), kro::kInvalidArgument);
        scene.Tell({kBoris}); // moved up, and the page does not know yet
        QCOMPARE(login(0), kro::kOk);
        QCOMPARE(scene.asked, std::pair(1u, 0));
        scene.Tell({kAnna, kBoris});
        QCOMPARE(login(1), kro::kOk);
        QCOMPARE(scene.asked, std::pair(3u, 1));
        QCOMPARE(scene.view.TakeCalls(), (Calls{"LoggedIn", "LoggedIn"}));
    }

    void eachFailureHasItsMessage()
    {
        const std::tuple<TryTokenReply, const char16_t *> rows[] = {
            {{TokenError::PinMissing}, u"enter the PIN"},
            {{TokenError::WrongPin}, u"The PIN is wrong. Please"},
            {{TokenError::FewTriesLeft}, u"few tries"},
            {{TokenError::LastTry}, u"one more wrong PIN"},
            {{TokenError::PinLocked}, u"locked itself"},
            {{TokenError::PinExpired}, u"wants a new PIN"},
            {{TokenError::Removed}, u"removed or does not answer"},
            {{TokenError::NotEnrolled}, u"not registered"},
            {{TokenError::NoKey}, u"no longer has the key"},
            {{TokenError::Failed}, u"refuses to work"},
            {{TokenError::NoKey, VolumeError::Vanished}, u"has been removed"},
        };
        Scene scene;
        scene.Tell({kAnna});
        scene.Names();
        kro::result_t nested = kro::kOk;
        scene.view.duringMessage = [&] { nested = scene.view.tokenLogic->LoginByToken(0, ""); };
        for (const auto &[reply, says] : rows) {
            scene.reply = reply;
            QCOMPARE(scene.view.tokenLogic->LoginByToken(0, "1111"), kro::kOk);
            QVERIFY2(scene.view.lastText.find(says) != std::u16string::npos,
                     qPrintable(QString::fromStdU16String(scene.view.lastText)));
            QCOMPARE(nested, kro::kInvalidState);
        }
        const std::string endless(5000, '1'); // asks nobody
        QCOMPARE(scene.view.tokenLogic->LoginByToken(0, endless.c_str()), kro::kOk);
        QVERIFY(scene.view.lastText.starts_with(u"The PIN is wrong"));
        QCOMPARE(scene.view.TakeCalls().size(), std::size(rows) + 1);
        scene.reply = {TokenError::Cancelled};
        QCOMPARE(scene.view.tokenLogic->LoginByToken(0, ""), kro::kOk);
        QCOMPARE(scene.view.TakeCalls(), Calls());
    }
};

PBA_REGISTER_TEST(TokenPagesTest);

#include "tst_token_pages.moc"
