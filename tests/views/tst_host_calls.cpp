// Any host: calls that fail, call back, or ask for screens at any moment.
#include <QApplication>
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
    // The report names the place, nothing is remembered of a login that failed, and the request made in the
    // failed call waits.
    void EveryCallMayFail()
    {
        const char *login = "loginButton";
        const char *change = "changePasswordButton";
        const char *recover = "startPasswordRecoveryButton";
        const struct
        {
            // The call that fails, or "no" and the logic that is missing.
            QByteArray call;
            // Pressed on the login page, or on that of the password change. None: it fails at the start.
            const char *button;
            const char *member;
            // 0: the real one.
            int line;
        } rows[] = {
            {"Init", nullptr, "InitBusinessLogic", 0},
            {"CheckTokensConnected", nullptr, "IsAnyTokenConnected", 1644},
            {"StartLoginByToken", nullptr, "ShowLoginByTokenScreen", 1684},
            {"IsAutologonSuppressed", nullptr, "ShowLoginByPasswordScreen", 1664},
            {"StartLoginByPassword", login, "OnLogin", 629},
            {"Login", login, "OnLogin", 640},
            {"StartOperatingSystem", login, "ShowLoggedInInternal", 1329},
            {"GetPasswordChangeInfo", change, "ShowLoggedInInternal", 1344},
            {"ConfirmLoggedIn", change, "ShowLoggedInInternal", 1365},
            {"PrepareChangePassword", change, "ShowChangePasswordInternal", 1307},
            {"ChangePassword", "saveNewPasswordButton", "OnSavePassword", 697},
            {"CancelChangePassword", "cancelPasswordChange", "OnCancelChangePassword", 714},
            {"StartPasswordRecovery", recover, "OnPasswordRecoveryInternal", 0},
            {"no password logic", login, "OnLogin", 640},
            {"no business logic", login, "OnLogin", 629},
            {"no business logic", recover, "OnPasswordRecoveryInternal", 0},
        };
        for (const auto &row : rows) {
            // Names of their own: not every compiler lets a lambda capture a structured binding.
            const QByteArray &call = row.call;
            const char *button = row.button;
            const char *member = row.member;
            const int line = row.line;
            const bool missing = call.startsWith("no ");
            const bool boxFirst = call == "ConfirmLoggedIn" || button == recover;
            Session session(call);
            RecordingHost &host = session.host;
            if (call == "ChangePassword" || call == "CancelChangePassword")
                session.request = [&] { host.passwordView->ShowChangePassword(u"", u"", false); };
            session.options = call.contains("Token") ? 4 : 1;
            host.tokensConnected = call == "StartLoginByToken";
            host.changeAllowed = call != "ConfirmLoggedIn";
            host.silent = call == "no password logic";
            session.AcceptLogins();
            host.results[call] = kro::kUnexpected;
            if (call != "Init")
                host.actions[call] = [&] { host.view->ShowTestBootMessage(); };
            WriteTextToFile(QString::fromUtf16(pba::kLastUserPath), u"old"_qs);
            session.Play([&] {
                Boxes boxes({boxFirst ? u"button3"_qs : u"Escape"_qs, u"Escape"_qs});
                if (call == "no business logic")
                    host.view->SetBusinessLogic(nullptr);
                if (button)
                    Session::LogIn(button);
                QTRY_COMPARE(boxes.seen.size(), boxFirst ? 2 : 1);
                const Box &report = boxes.seen.last();
                const QString place = u"Function: pba::QtViewImpl::%1\nLine: %2"_qs.arg(
                    QString::fromLatin1(member), line ? QString::number(line) + u'\n' : QString());
                QCOMPARE(report.title + report.buttons, u"Internal Error");
                QVERIFY2(report.text.startsWith(u"Internal PBA error.\n\n"_qs + place),
                         qPrintable(report.text));
                QVERIFY(report.text.endsWith(missing ? u"\nres: 8000006b(Not initialized)"
                                                     : u"\nres: 80000040(Unexpected)"));
                QVERIFY(!report.waiting);
                QVERIFY(Session::Screen() != 5);
                QString user;
                ReadTextFromFile(QString::fromUtf16(pba::kLastUserPath), &user);
                const bool loggedIn = line >= 1307 && line <= 1365;
                QCOMPARE(user, loggedIn ? u"u" : u"old");
                if (call == "Login")
                    QVERIFY(fake_pbe::LogText().contains("Internal PBA error. Function: pba::QtViewImpl::"
                                                         "OnLogin, line: 640, res: 0x80000040\r\n"));
            });
        }
    }

    void EndlessRequestsDoNotUseUpTheStack()
    {
        Session session;
        session.host.actions["IsAutologonSuppressed"] = [&] { session.host.view->ShowInitialScreen(); };
        session.Play([&] {
            QTRY_VERIFY(session.host.Count("IsAutologonSuppressed") > 200);
            QCOMPARE(Session::Screen(), 0);
        });
    }

    void RunEndsWithAMessageInFront()
    {
        Session session;
        session.host.actions["Login"] = [&] {
            session.host.view->Close();
            // Meanwhile another login, by a timer, carries the request out behind the message.
            session.host.actions.erase("Login");
            QTimer::singleShot(0, qApp, [] { QMetaObject::invokeMethod(Session::Dialog(), "OnLogin"); });
            session.host.passwordView->ShowMessage(u"Wait", u"A message that nobody closes", 0, 2);
        };
        QCOMPARE(session.Play([] { Session::LogIn(); }), kro::kOk);
    }

    void MessageInsideInit()
    {
        Session session;
        session.request = [&] {
            Boxes boxes({u"button3"_qs});
            session.host.view->ShowInitialScreen();
            session.host.passwordView->ShowMessage(u"Notice", u"The battery is low.", 1, 0);
            QCOMPARE(boxes.seen.size(), 1);
        };
        session.Play([&] {
            QTRY_COMPARE(Session::Screen(), 0);
            QVERIFY(!QGuiApplication::overrideCursor());
        });
    }
};

PBA_REGISTER_TEST(TestHostCalls);
#include "tst_host_calls.moc"
