// Any host: calls that fail, call back, or ask for screens at any moment.
#include <QApplication>
#include <QTest>
#include <QTimer>

#include "fake_pbe.h"
#include "settings/paths.h"
#include "settings/text_file.h"
#include "test_main.h"
#include "views/session.h"

class TestHostCalls : public QObject
{
    Q_OBJECT

private slots:
    void EveryCallMayFail_data();
    void EveryCallMayFail();
    void MissingLogicIsReported_data();
    void MissingLogicIsReported();
    void EndlessRequestsDoNotUseUpTheStack();
    void RunEndsWithAMessageInFront();
    void RunEndsWhileAReportStands();
    void LogicMayBeReplacedInItsOwnCall();
    void MessageInsideInit();
};

void TestHostCalls::EveryCallMayFail_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<quint32>("options");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("place");
    const auto row = [](const char *call, quint32 options, const char *button, const QString &place) {
        QTest::newRow(call) << QByteArray(call) << options << QString::fromLatin1(button) << place;
    };
    row("Init", 1, "", u"InitBusinessLogic\nLine: "_qs);
    row("CheckTokensConnected", 4, "", u"IsAnyTokenConnected\nLine: 1644\n"_qs);
    row("StartLoginByToken", 4, "", u"ShowLoginByTokenScreen\nLine: 1684\n"_qs);
    row("IsAutologonSuppressed", 1, "", u"ShowLoginByPasswordScreen\nLine: 1664\n"_qs);
    row("StartOperatingSystem", 1, "loginButton", u"ShowLoggedInInternal\nLine: 1329\n"_qs);
    row("GetPasswordChangeInfo", 1, "changePasswordButton", u"ShowLoggedInInternal\nLine: 1344\n"_qs);
    row("ConfirmLoggedIn", 1, "changePasswordButton", u"ShowLoggedInInternal\nLine: 1365\n"_qs);
    row("StartPasswordRecovery", 1, "startPasswordRecoveryButton", u"OnPasswordRecoveryInternal\nLine: "_qs);
}

// The report names the member and the line; the page stays and the request made in the failed call waits.
void TestHostCalls::EveryCallMayFail()
{
    QFETCH(QByteArray, call);
    QFETCH(quint32, options);
    QFETCH(QString, button);
    QFETCH(QString, place);
    Session session;
    session.options = options;
    session.host.results[call] = kro::kUnexpected;
    session.host.tokensConnected = call == "StartLoginByToken";
    session.host.actions["Init"] = [&] {
        session.host.view->GetLoginByPasswordView()->SetLogic(&session.host);
    };
    session.host.actions["Login"] = [&] { session.host.passwordView->ShowLoggedIn(); };
    if (call != "Init")
        session.host.actions[call] = [&] { session.host.view->ShowTestBootMessage(); };
    const bool boxFirst = call == "ConfirmLoggedIn" || call == "StartPasswordRecovery";
    session.Play([&] {
        Boxes answers(boxFirst ? QStringList{u"button3"_qs, u"Escape"_qs} : QStringList{u"Escape"_qs});
        if (!button.isEmpty()) {
            Session::EnterCredentials(u"u"_qs, u"p"_qs);
            Session::Click(qPrintable(button));
        }
        QTRY_VERIFY(!answers.seen.isEmpty());
        QVERIFY2(answers.seen.last().text.contains(u"Function: pba::QtViewImpl::"_qs + place),
                 qPrintable(answers.seen.last().text));
        QVERIFY(answers.seen.last().text.endsWith(u"res: 80000040(Unexpected)"));
        QVERIFY(Session::Screen() != 5);
    });
}

void TestHostCalls::MissingLogicIsReported_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("place");
    QTest::newRow("login") << "loginButton"
                           << "OnLogin\nLine: 629\n";
    QTest::newRow("recovery") << "startPasswordRecoveryButton"
                              << "OnPasswordRecoveryInternal\nLine: ";
}

void TestHostCalls::MissingLogicIsReported()
{
    QFETCH(QString, button);
    QFETCH(QString, place);
    Session session;
    session.Play([&] {
        session.host.view->SetBusinessLogic(nullptr);
        Boxes boxes(button == u"loginButton" ? QStringList{u"Escape"_qs}
                                             : QStringList{u"button3"_qs, u"Escape"_qs});
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click(qPrintable(button));
        QVERIFY(boxes.seen.last().text.contains(u"Function: pba::QtViewImpl::"_qs + place));
        QVERIFY(boxes.seen.last().text.endsWith(u"res: 8000006b(Not initialized)"));
    });
}

void TestHostCalls::EndlessRequestsDoNotUseUpTheStack()
{
    Session session;
    session.host.actions["IsAutologonSuppressed"] = [&] { session.host.view->ShowInitialScreen(); };
    session.host.actions["Init"] = [&] {
        session.host.view->GetLoginByPasswordView()->SetLogic(&session.host);
    };
    session.Play([&] {
        QTRY_VERIFY(session.host.Count("IsAutologonSuppressed") > 200);
        QCOMPARE(Session::Screen(), 0);
    });
}

void TestHostCalls::RunEndsWithAMessageInFront()
{
    Session session;
    session.host.actions["Login"] = [&] {
        session.host.view->Close();
        // Meanwhile another login, by a timer, carries the request out behind the message.
        session.host.actions.erase("Login");
        QTimer::singleShot(0, qApp, [] { QMetaObject::invokeMethod(Session::Dialog(), "OnLogin"); });
        session.host.passwordView->ShowMessage(u"Wait", u"A message that nobody closes", 0, 2);
    };
    QCOMPARE(session.Play([&] {
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
    }),
             kro::kOk);
}

void TestHostCalls::RunEndsWhileAReportStands()
{
    Session session;
    session.host.results["Login"] = kro::kUnexpected;
    QCOMPARE(session.Play(
                 [&] {
                     QTimer::singleShot(20, qApp, [] { QCoreApplication::exit(1); });
                     Session::EnterCredentials(u"u"_qs, u"p"_qs);
                     Session::Click("loginButton");
                 },
                 1),
             kro::kUnspecifiedError);
}

void TestHostCalls::LogicMayBeReplacedInItsOwnCall()
{
    Session session;
    RecordingHost other;
    session.host.actions["Login"] = [&] {
        session.host.view->SetBusinessLogic(&other);
        session.host.passwordView->SetLogic(nullptr);
        session.host.passwordView->ShowLoggedIn();
    };
    session.Play([&] {
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
    });
    QCOMPARE(other.calls, QList<QByteArray>{"StartOperatingSystem"});
}

void TestHostCalls::MessageInsideInit()
{
    Session session;
    Boxes *boxes = nullptr;
    session.host.actions["Init"] = [&] {
        boxes = new Boxes({u"button3"_qs});
        session.host.view->GetLoginByPasswordView()->ShowMessage(u"Notice", u"The battery is low.", 1, 0);
    };
    session.Play([&] {
        QCOMPARE(boxes->seen.size(), 1);
        QTRY_COMPARE(Session::Screen(), 0);
        QVERIFY(!QGuiApplication::overrideCursor());
        delete boxes;
    });
}

PBA_REGISTER_TEST(TestHostCalls);
#include "tst_host_calls.moc"
