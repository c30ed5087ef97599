// Screens: the start, the first screen, what each page shows, requests that wait, events, closing.
#include <QApplication>
#include <QStackedWidget>
#include <QTest>

#include "fake_pbe.h"
#include "pbe/events.h"
#include "settings/paths.h"
#include "test_main.h"
#include "views/session.h"

class TestScreens : public QObject
{
    Q_OBJECT

private slots:
    void StartUp();
    void FirstScreen_data();
    void FirstScreen();
    void WhatEachScreenShows_data();
    void WhatEachScreenShows();
    void NewestRequestWins();
    void RequestOutsideACallWaits();
    void RequestIsKeptWhenTheCallFails();
    void EscapeLeavesTheDialogOpen();
    void PointerFollowsTheMice();
    void TokensAreCheckedOnlyWhereTheyMatter_data();
    void TokensAreCheckedOnlyWhereTheyMatter();
    void FailingTokenCheckReportsOnce();
    void TestBootEndsByAnyKeyOnce();
    void KeyboardTestEndsByItsButtonOnly();
    void ClosingEndsTheRun();
    void StoppedRunAnswersACode();
};

// The starting page paints before the host is asked anything; the wait is shown and over afterwards.
void TestScreens::StartUp()
{
    Session session;
    session.showInitialScreen = false;
    session.host.actions["Init"] = [] {
        QCOMPARE(Session::Screen(), 8);
        QCOMPARE(Session::Label("labelHostNameValue")->text(), u"Host name");
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(fake_pbe::Calls().last(), "repaint on");
        fake_pbe::SetMouseCount(0);
    };
    QCOMPARE(session.Play([&] {
        QVERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(fake_pbe::Calls().last(), "pointer hidden");
        QCOMPARE(Session::Dialog()->geometry(), QGuiApplication::primaryScreen()->geometry());
    }),
             kro::kOk);
    QCOMPARE(session.host.calls, QList<QByteArray>{"Init"});
    QVERIFY(fake_pbe::LogText().contains("orvane pba::QtViewImpl::InitBusinessLogic\tEND: 0x00000000\r\n"));
}

void TestScreens::FirstScreen_data()
{
    QTest::addColumn<quint32>("options");
    QTest::addColumn<bool>("token");
    QTest::addColumn<int>("screen");
    QTest::addColumn<bool>("prompt");
    QTest::newRow("nothing") << 0u << true << 10 << false;
    QTest::newRow("other bits only") << 0xFFFFFFFAu << true << 10 << false;
    QTest::newRow("password") << 1u << true << 0 << false;
    QTest::newRow("token, none connected") << 4u << false << 6 << false;
    QTest::newRow("token connected") << 4u << true << 7 << false;
    QTest::newRow("both, none connected") << 5u << false << 0 << true;
    QTest::newRow("both, connected") << 5u << true << 7 << false;
}

void TestScreens::FirstScreen()
{
    QFETCH(quint32, options);
    QFETCH(bool, token);
    QFETCH(int, screen);
    QFETCH(bool, prompt);
    Session session;
    session.options = options;
    session.host.tokensConnected = token;
    session.Play([&] {
        QCOMPARE(Session::Screen(), screen);
        if (screen == 0)
            QCOMPARE(Session::Label("tokenAuthenticationPrompt")->isVisible(), prompt);
    });
}

void TestScreens::WhatEachScreenShows_data()
{
    QTest::addColumn<std::function<void(Session &)>>("request");
    QTest::addColumn<int>("screen");
    QTest::addColumn<QString>("defaultButton");
    QTest::addColumn<QString>("focus");
    QTest::addColumn<bool>("help");
    using Request = std::function<void(Session &)>;
    QTest::newRow("login") << Request([](Session &s) { s.host.view->ShowInitialScreen(); }) << 0
                           << "loginButton"
                           << "loginDomain" << true;
    QTest::newRow("password change") << Request([](Session &s) {
        s.host.view->GetLoginByPasswordView()->SetLogic(&s.host);
        s.host.view->GetLoginByPasswordView()->ShowChangePassword(u"", u"", false);
    }) << 1 << "saveNewPasswordButton"
                                     << "newPassword" << true;
    QTest::newRow("test boot") << Request([](Session &s) { s.host.view->ShowTestBootMessage(); }) << 5
                               << "testBootButton"
                               << "testBootButton" << false;
    QTest::newRow("starting the system")
        << Request([](Session &s) { s.host.view->ShowStartingOsScreen(); }) << 9 << ""
        << "" << false;
}

void TestScreens::WhatEachScreenShows()
{
    QFETCH(std::function<void(Session &)>, request);
    QFETCH(int, screen);
    QFETCH(QString, defaultButton);
    QFETCH(QString, focus);
    QFETCH(bool, help);
    Session session;
    session.showInitialScreen = false;
    session.host.actions["Init"] = [&] { request(session); };
    session.Play([&] {
        QTRY_COMPARE(Session::Screen(), screen);
        QStringList defaults;
        for (const QPushButton *button : Session::Dialog()->findChildren<QPushButton *>()) {
            if (button->isDefault())
                defaults.append(button->objectName());
        }
        QCOMPARE(defaults.join(u','), defaultButton);
        if (!focus.isEmpty())
            QTRY_COMPARE(QApplication::focusWidget()->objectName(), focus);
        QCOMPARE(Session::Find<QPushButton>("helpButton")->isVisible(), help);
        QVERIFY(!Session::Find<QPushButton>("quitRecoveryButton")->isVisible());
        QVERIFY(!Session::Find<QPushButton>("restartRecoveryButton")->isVisible());
        QVERIFY(!Session::Find<QPushButton>("fpsButton")->isVisible());
    });
}

void TestScreens::NewestRequestWins()
{
    Session session;
    session.host.actions["Login"] = [&] {
        session.host.passwordView->ShowLoggedIn();
        session.host.view->ShowTestBootMessage();
        QCOMPARE(Session::Screen(), 0);
    };
    session.Play([&] {
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        QCOMPARE(Session::Screen(), 5);
    });
    QCOMPARE(session.host.Count("StartOperatingSystem"), 0);
}

void TestScreens::RequestOutsideACallWaits()
{
    Session session;
    session.Play([&] {
        QCOMPARE(session.host.view->ShowTestBootMessage(), kro::kOk);
        QTest::qWait(20);
        QCOMPARE(Session::Screen(), 0);
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        QCOMPARE(Session::Screen(), 5);
    });
}

void TestScreens::RequestIsKeptWhenTheCallFails()
{
    Session session;
    session.host.results["Login"] = kro::kUnexpected;
    session.host.actions["Login"] = [&] { session.host.view->ShowTestBootMessage(); };
    session.Play([&] {
        Boxes boxes({u"Escape"_qs});
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        QCOMPARE(Session::Screen(), 0);
        session.host.results.clear();
        session.host.actions.erase("Login");
        Session::Click("loginButton");
        QCOMPARE(Session::Screen(), 5);
    });
}

void TestScreens::EscapeLeavesTheDialogOpen()
{
    Session session;
    session.Play([&] {
        QTest::keyClick(Session::Dialog(), Qt::Key_Escape);
        QTest::keyClick(Session::Field("loginPassword"), Qt::Key_Escape);
        Session::Dialog()->close();
        QTest::qWait(10);
        QVERIFY(Session::Dialog()->isVisible());
    });
}

void TestScreens::PointerFollowsTheMice()
{
    Session session;
    session.host.actions["Init"] = [] {
        fake_pbe::SetMouseCount(0);
        Session::Notify(pbe::kMouseRemoved);
        QCOMPARE(fake_pbe::Calls().last(), "pointer shown");
    };
    session.Play([&] {
        QCOMPARE(fake_pbe::Calls().last(), "pointer hidden");
        fake_pbe::SetMouseCount(2);
        Session::Notify(pbe::kMouseAdded);
        QCOMPARE(fake_pbe::Calls().last(), "pointer shown");
    });
}

void TestScreens::TokensAreCheckedOnlyWhereTheyMatter_data()
{
    QTest::addColumn<quint32>("options");
    QTest::addColumn<bool>("boxInFront");
    QTest::addColumn<int>("checks");
    QTest::newRow("login page") << 5u << false << 1;
    QTest::newRow("no-tokens page") << 4u << false << 1;
    QTest::newRow("login page without token login") << 1u << false << 0;
    QTest::newRow("no-users page") << 0u << false << 0;
    QTest::newRow("a message in front") << 5u << true << 0;
}

void TestScreens::TokensAreCheckedOnlyWhereTheyMatter()
{
    QFETCH(quint32, options);
    QFETCH(bool, boxInFront);
    QFETCH(int, checks);
    Session session;
    session.options = options;
    session.Play([&] {
        QTRY_VERIFY(Session::Dialog()->isActiveWindow());
        QTest::qWait(20);
        session.host.calls.clear();
        Boxes boxes({u"button3"_qs});
        int checksWhileStanding = -1;
        boxes.whileStanding = [&] {
            Session::Notify(pbe::kTokenAdded);
            QTest::qWait(20);
            checksWhileStanding = session.host.Count("UpdateConnectedTokens");
        };
        if (boxInFront) {
            session.host.view->GetLoginByPasswordView()->ShowMessage(u"t", u"m", 0, 0);
            QCOMPARE(checksWhileStanding, 0);
            return;
        }
        Session::Notify(pbe::kTokenAdded);
        QCOMPARE(QGuiApplication::overrideCursor() != nullptr, checks == 1);
        QTest::qWait(20);
        QCOMPARE(session.host.Count("UpdateConnectedTokens"), checks);
        QVERIFY(!QGuiApplication::overrideCursor());
    });
}

void TestScreens::FailingTokenCheckReportsOnce()
{
    Session session;
    session.options = 5;
    session.host.results["UpdateConnectedTokens"] = kro::kNotReady;
    session.Play([&] {
        Boxes boxes({u"Escape"_qs, u"Escape"_qs, u"Escape"_qs});
        Session::Notify(pbe::kTokenRemoved);
        QTRY_COMPARE(boxes.seen.size(), 1);
        QVERIFY(boxes.seen[0].text.contains(
            u"Function: pba::QtViewImpl::OnUpdateConnectedTokensSlot\nLine: 1035\nres: 80000063(Not ready)"));
        QTest::qWait(50);
        QCOMPARE(boxes.seen.size(), 1);
        session.host.results.clear();
        session.host.screenMustChange = true;
        session.host.tokensConnected = true;
        Session::Notify(pbe::kTokenAdded);
        QTRY_COMPARE(Session::Screen(), 7);
    });
}

void TestScreens::TestBootEndsByAnyKeyOnce()
{
    Session session;
    session.showInitialScreen = false;
    session.host.actions["Init"] = [&] { session.host.view->ShowTestBootMessage(); };
    session.Play([&] {
        QTRY_COMPARE(QApplication::focusWidget(), Session::Find<QPushButton>("testBootButton"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
        QCOMPARE(session.host.Count("StartOperatingSystem"), 1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        Session::Click("testBootButton");
        QCOMPARE(session.host.Count("StartOperatingSystem"), 1);
    });
}

void TestScreens::KeyboardTestEndsByItsButtonOnly()
{
    Session session;
    fake_pbe::WriteFile(pba::kArgumentsPath, "test-mode = on\n");
    session.showInitialScreen = false;
    session.host.actions["Init"] = [&] { session.host.view->ShowTestBootMessage(); };
    session.Play([&] {
        QTRY_COMPARE(Session::Screen(), 11);
        Session::Field("testLineEdit")->setFocus();
        Session::Type(u"a b 1"_qs);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(Session::Field("testLineEdit")->text(), u"a b 1");
        QCOMPARE(session.host.Count("StartOperatingSystem"), 0);
        Session::Click("startWindowsButton");
        Session::Click("startWindowsButton");
        QCOMPARE(session.host.Count("StartOperatingSystem"), 1);
    });
}

// The way of every good start: the page is painted, then the screen is switched off and the run ends, also
// when a message stands in front.
void TestScreens::ClosingEndsTheRun()
{
    Session session;
    session.host.actions["Login"] = [&] { session.host.passwordView->ShowLoggedIn(); };
    session.host.actions["StartOperatingSystem"] = [&] {
        session.host.view->ShowStartingOsScreen();
        QCOMPARE(Session::Screen(), 9);
        session.host.view->Close();
        QVERIFY(fake_pbe::IsRepaintOn());
    };
    const kro::result_t result = session.Play([&] {
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        QVERIFY(!fake_pbe::IsRepaintOn());
        QVERIFY(!Session::Dialog()->isVisible());
    });
    QCOMPARE(result, kro::kOk);
}

void TestScreens::StoppedRunAnswersACode()
{
    Session session;
    const kro::result_t result = session.Play([] {}, 1);
    QCOMPARE(result, kro::kUnspecifiedError);
    QCOMPARE(session.View()->ShowInitialScreen(), kro::kInvalidState);
}

PBA_REGISTER_TEST(TestScreens);
#include "tst_screens.moc"
