// SPDX-License-Identifier: Apache-2.0
// Screens: the start, what each page shows, requests that wait, events, closing.
#include <QScreen>
#include <QTimer>

#include "pbe/events.h"
#include "module/settings/paths.h"
#include "tests/support/test_main.h"
#include "tests/views/session.h"

// The page, what is visible of that which comes and goes, the default buttons and where the focus then is.
static QString Shown()
{
    QString shown = QString::number(Session::Screen());
    if (Session::Label("tokenAuthenticationPrompt")->isVisible())
        shown += u" prompt";
    for (const char *name : {"helpButton", "quitRecoveryButton", "restartRecoveryButton", "fpsButton"}) {
        if (Session::Find(name)->isVisible())
            shown += u' ' + QString::fromLatin1(name);
    }
    for (const QPushButton *button : Session::Dialog()->findChildren<QPushButton *>()) {
        if (button->isDefault())
            shown += u' ' + button->objectName() + u' ' + Session::FocusName();
    }
    return shown;
}

// And Return presses a link, and nothing but it. The test boot is left out: it ends with any key.
static void TabLeadsToAllThatCanBeUsed()
{
    QSet<QWidget *> missing;
    for (QWidget *widget : Session::Dialog()->findChildren<QWidget *>()) {
        if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0)
            missing.insert(widget);
    }
    for (auto stops = Session::Screen() == 5 ? 0 : missing.size(); stops > 0; --stops) {
        Session::Press(Qt::Key_Tab);
        QVERIFY2(missing.remove(QApplication::focusWidget()), qPrintable(Session::FocusName()));
    }
    if (!Session::Find("helpButton")->isVisible())
        return;
    Boxes boxes({u"button3"_qs, u"button3"_qs});
    Session::Find("helpButton")->setFocus();
    Session::Press(Qt::Key_Return);
    QCOMPARE(boxes.seen.size(), 1);
}

// And nowhere else: a check would show another page.
static void TokensAreCheckedWhereTheyMatter(const Session &session)
{
    const bool expected = (session.options & 4) != 0 && QList{0, 6, 7}.contains(Session::Screen());
    QTRY_VERIFY(Session::Dialog()->isActiveWindow());
    QTRY_VERIFY(!QGuiApplication::overrideCursor());
    const int before = session.host.Count("UpdateConnectedTokens");
    Session::Notify(pbe::kTokenAdded);
    QCOMPARE(QGuiApplication::overrideCursor() != nullptr, expected);
    QTest::qWait(20);
    QTRY_COMPARE(session.host.Count("UpdateConnectedTokens") - before, expected ? 1 : 0);
    QTRY_VERIFY(!QGuiApplication::overrideCursor());
}

class TestScreens : public QObject
{
    Q_OBJECT

private slots:
    // The starting page paints before the host is asked anything; the wait is shown and over afterwards,
    // and nothing closes the dialog.
    void StartUp()
    {
        Session session;
        session.request = [&] {
            QCOMPARE(Session::Screen(), 8);
            QVERIFY(QGuiApplication::overrideCursor());
            QCOMPARE(fake_pbe::Calls().last(2),
                     (QList<QByteArray>{"repaint on", "keyboard layout 00000409"}));
            fake_pbe::Now().mouseCount = 0;
            Session::Notify(pbe::kMouseRemoved);
            QCOMPARE(fake_pbe::Calls().last(), "pointer shown");
            Boxes boxes({u"button3"_qs});
            session.host.passwordView->ShowMessage(u"Notice", u"The battery is low.", 1, 0);
            QCOMPARE(boxes.seen.size(), 1);
        };
        const kro::result_t result = session.Play([] {
            QTRY_VERIFY(!QGuiApplication::overrideCursor());
            QCOMPARE(fake_pbe::Calls().last(), "pointer hidden");
            QCOMPARE(Session::Dialog()->geometry(), QGuiApplication::primaryScreen()->geometry());
            fake_pbe::Now().mouseCount = 2;
            Session::Notify(pbe::kMouseAdded);
            QCOMPARE(fake_pbe::Calls().last(), "pointer shown");

            QTest::keyClick(Session::Dialog(), Qt::Key_Escape);
            Session::Dialog()->close();
            QTest::qWait(10);
            QVERIFY(Session::Dialog()->isVisible());
        });
        QCOMPARE(result, kro::kOk);
        QCOMPARE(session.host.calls, QList<QByteArray>{"Init"});
    }

    void WhatEachScreenShows()
    {
        const auto firstScreen = [](RecordingHost &host) { host.view->ShowInitialScreen(); };
        const struct
        {
            const char *name;
            quint32 options;
            bool token;
            void (*request)(RecordingHost &host);
            const char16_t *shown;
        } rows[] = {
            {"no logon", 0xFFFFFFFA, true, firstScreen, u"10 helpButton"},
            {"password", 1, true, firstScreen, u"0 helpButton loginButton loginDomain"},
            {"token, none connected", 4, false, firstScreen, u"6 helpButton"},
            {"token connected", 4, true, firstScreen, u"7 helpButton"},
            {"both, none connected", 5, false, firstScreen, u"0 prompt helpButton loginButton loginDomain"},
            {"both, connected", 5, true, firstScreen, u"7 helpButton"},
            {"password change", 5, false,
             [](RecordingHost &host) { host.passwordView->ShowChangePassword(u"", u"", false); },
             u"1 helpButton saveNewPasswordButton newPassword"},
            {"test boot", 0, false, [](RecordingHost &host) { host.view->ShowTestBootMessage(); },
             u"5 testBootButton testBootButton"},
            {"starting the system", 5, false, [](RecordingHost &host) { host.view->ShowStartingOsScreen(); },
             u"9"},
        };
        for (const auto &row : rows) {
            Session session(row.name);
            session.options = row.options;
            session.host.tokensConnected = row.token;
            session.request = [&] { row.request(session.host); };
            session.Play([&] {
                QTRY_COMPARE(Shown(), QString::fromUtf16(row.shown));
                TabLeadsToAllThatCanBeUsed();
                TokensAreCheckedWhereTheyMatter(session);
            });
        }
    }

    // The newest request is carried out by the next call that succeeds, wherever it was made.
    void RequestsWait()
    {
        Session session;
        session.host.results["Login"] = kro::kUnexpected;
        session.host.actions["Login"] = [&] {
            session.host.passwordView->ShowLoggedIn();
            session.host.view->ShowTestBootMessage();
        };
        session.Play([&] {
            Boxes boxes({u"Escape"_qs});
            Session::LogIn();
            QCOMPARE(Session::Screen(), 0);
            session.host.results.clear();
            session.host.actions.clear();
            Session::LogIn();
            QCOMPARE(Session::Screen(), 5);
            QCOMPARE(session.host.Count("StartOperatingSystem"), 0);

            QCOMPARE(session.host.view->ShowInitialScreen(), kro::kOk);
            QTest::qWait(20);
            QCOMPARE(Session::Screen(), 5);
            Session::Click("testBootButton");
            QCOMPARE(Session::Screen(), 0);
        });
    }

    // However often the window becomes active: its report does that too. While a message stands in front
    // nobody looks.
    void FailingTokenCheckReportsOnce()
    {
        for (const auto &[call, line] :
             {std::pair("UpdateConnectedTokens", 1035), std::pair("CheckTokensConnected", 1644),
              std::pair("IsAutologonSuppressed", 1664), std::pair("StartLoginByToken", 1684),
              std::pair("GetTokens", 1714)}) {
            Session session(call);
            RecordingHost &host = session.host;
            session.options = 5;
            session.Play([&host, call = call, line = line] {
                QTRY_VERIFY(Session::Dialog()->isActiveWindow() && !QGuiApplication::overrideCursor());
                host.results[call] = kro::kNotReady;
                host.screenMustChange = true;
                host.tokensConnected = line > 1664;
                Boxes boxes({u"Escape"_qs, u"button3"_qs, u"Escape"_qs});
                Session::Notify(pbe::kTokenRemoved);
                QTRY_COMPARE(boxes.seen.size(), 1);
                QVERIFY2(boxes.seen[0].text.endsWith(u"\nLine: %1\nres: 80000063(Not ready)"_qs.arg(line)),
                         qPrintable(boxes.seen[0].text));
                QTRY_VERIFY(host.Count("UpdateConnectedTokens") >= 2);
                QTest::qWait(50);
                boxes.whileStanding = [&] {
                    if (boxes.seen.size() > 2)
                        return;
                    host.calls.clear();
                    Session::Notify(pbe::kTokenAdded);
                    QTest::qWait(20);
                    QCOMPARE(host.calls.size(), 0);
                };
                host.passwordView->ShowMessage(u"t", u"m", 0, 0);
                // Something has changed, and fails again.
                QTRY_COMPARE(boxes.seen.size(), 3);

                host.results.clear();
                host.tokensConnected = true;
                Session::Notify(pbe::kTokenAdded);
                QTRY_COMPARE(Session::Screen(), 7);
            });
        }
    }

    // The keyboard test by its button only, the test boot by any key or by itself; each once, also when the
    // host refuses.
    void TestBootEndsOnce()
    {
        Session session;
        RecordingHost &host = session.host;
        fake_pbe::WriteFile(pba::kArgumentsPath, "test-mode = on\n");
        session.request = [&] { host.view->ShowTestBootMessage(); };
        host.actions["StartOperatingSystem"] = session.request;
        session.Play([&] {
            QCOMPARE(Session::Screen(), 11);
            Session::Field("testLineEdit")->setFocus();
            Session::Type(u"a b 1"_qs);
            Session::Press(Qt::Key_Return);
            QCOMPARE(Session::Field("testLineEdit")->text(), u"a b 1");
            QCOMPARE(host.Count("StartOperatingSystem"), 0);
            Session::Click("startWindowsButton");
            QCOMPARE(host.Count("StartOperatingSystem"), 1);

            const auto passTwentySeconds = [] {
                for (QTimer *timer : Session::Dialog()->findChildren<QTimer *>()) {
                    QTimerEvent event(timer->timerId());
                    if (timer->isActive() && timer->interval() == 20000)
                        QCoreApplication::sendEvent(timer, &event);
                }
            };
            passTwentySeconds();
            QCOMPARE(host.Count("StartOperatingSystem"), 2);

            QTRY_COMPARE(Session::FocusName(), u"testBootButton");
            host.results["StartOperatingSystem"] = kro::kUnexpected;
            Boxes boxes({u"Escape"_qs});
            Session::Press(Qt::Key_F5);
            QCOMPARE(boxes.seen.size(), 1);
            QTest::keyClick(Session::Find("testBootButton"), Qt::Key_Return);
            Session::Click("testBootButton");
            passTwentySeconds();
            QCOMPARE(host.Count("StartOperatingSystem"), 3);
        });
    }

    // The way of every good start: the page is painted, then the screen is switched off and the run ends.
    void ClosingEndsTheRun()
    {
        Session session;
        session.host.AcceptLogins();
        session.host.actions["StartOperatingSystem"] = [&] {
            session.host.view->ShowStartingOsScreen();
            QCOMPARE(Session::Screen(), 9);
            session.host.view->Close();
            QVERIFY(!fake_pbe::Calls().contains("repaint off"));
        };
        const kro::result_t result = session.Play([] {
            Session::LogIn();
            QVERIFY(fake_pbe::Calls().contains("repaint off"));
            QVERIFY(!Session::Dialog()->isVisible());
        });
        QCOMPARE(result, kro::kOk);
    }

    // Outside a run the view does nothing, whatever the host asks; a run may follow another, but not inside
    // it, and a view that runs is not deleted.
    void StoppedRunAnswersACodeAndIsFollowedByAnother()
    {
        Session session;
        pba::IMainView *view = session.view.get();
        const auto expectNoRun = [view] {
            for (const auto request :
                 {&pba::IMainView::ShowInitialScreen, &pba::IMainView::ShowTestBootMessage,
                  &pba::IMainView::ShowStartingOsScreen, &pba::IMainView::Close})
                QCOMPARE((view->*request)(), kro::kInvalidState);
            QVERIFY(!view->GetLoginByPasswordView());
            view->Idle();
        };
        expectNoRun();
        session.host.results["Login"] = kro::kUnexpected;
        const auto stopBehindAReport = [view] {
            pba::IMainView *second = CreateMainView();
            QCOMPARE(second->Run(), kro::kInvalidState);
            DeleteMainView(second);
            DeleteMainView(view);
            QCOMPARE(view->Run(), kro::kInvalidState);
            QTimer::singleShot(20, qApp, [] { QCoreApplication::exit(1); });
            Session::LogIn();
        };
        QCOMPARE(session.Play(stopBehindAReport, 1), kro::kUnspecifiedError);
        expectNoRun();
        QCOMPARE(session.Play([] { QCOMPARE(Session::Screen(), 0); }), kro::kOk);
        QCOMPARE(session.host.Count("Init"), 2);
        DeleteMainView(nullptr);
    }
};

PBA_REGISTER_TEST(TestScreens);
#include "tst_screens.moc"
