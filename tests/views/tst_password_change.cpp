// What follows a login by "Password change", and the page.
#include <QApplication>
#include <QTest>

#include "fake_pbe.h"
#include "test_main.h"
#include "views/session.h"

class TestPasswordChange : public QObject
{
    Q_OBJECT

private slots:
    void AfterLogin_data();
    void AfterLogin();
    void RequestSurvivesAFailedLogin();
    void Page_data();
    void Page();
    void NewPasswordIsConfirmed_data();
    void NewPasswordIsConfirmed();
    void RefusedPreparationKeepsThePage();
};

namespace {

// A login that the host accepts.
void AcceptLogins(Session &session)
{
    session.host.actions["Login"] = [&session] { session.host.passwordView->ShowLoggedIn(); };
}

} // namespace

void TestPasswordChange::AfterLogin_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("allowed");
    QTest::addColumn<QByteArray>("lastCall");
    QTest::addColumn<int>("screen");
    QTest::newRow("plain login") << "loginButton" << true << QByteArray("StartOperatingSystem") << 0;
    QTest::newRow("change allowed") << "changePasswordButton" << true << QByteArray("PrepareChangePassword")
                                    << 1;
    QTest::newRow("change refused") << "changePasswordButton" << false << QByteArray("ConfirmLoggedIn") << 0;
}

void TestPasswordChange::AfterLogin()
{
    QFETCH(QString, button);
    QFETCH(bool, allowed);
    QFETCH(QByteArray, lastCall);
    QFETCH(int, screen);
    Session session;
    AcceptLogins(session);
    session.host.changeAllowed = allowed;
    session.Play([&] {
        Boxes boxes({u"button3"_qs});
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click(qPrintable(button));
        QCOMPARE(session.host.calls.last(), lastCall);
        QCOMPARE(Session::Screen(), screen);
        QCOMPARE(boxes.seen.size(), lastCall == "ConfirmLoggedIn" ? 1 : 0);
        if (!boxes.seen.isEmpty()) {
            QCOMPARE(boxes.seen[0].title, u"Not now");
            QVERIFY(boxes.seen[0].errorTitle);
        }
    });
}

void TestPasswordChange::RequestSurvivesAFailedLogin()
{
    Session session;
    session.host.changeAllowed = true;
    session.Play([&] {
        Session::EnterCredentials(u"u"_qs, u"wrong"_qs);
        Session::Click("changePasswordButton");
        AcceptLogins(session);
        Session::Click("loginButton");
        QCOMPARE(Session::Screen(), 1);
    });
}

void TestPasswordChange::Page_data()
{
    QTest::addColumn<QByteArray>("domain");
    QTest::addColumn<bool>("mandatory");
    QTest::addColumn<QString>("label");
    QTest::newRow("with domain") << QByteArray("DOM%1") << false << "Domain: DOM%1, User: u%0";
    QTest::newRow("without, mandatory") << QByteArray() << true << "User: u%0";
}

void TestPasswordChange::Page()
{
    QFETCH(QByteArray, domain);
    QFETCH(bool, mandatory);
    QFETCH(QString, label);
    Session session;
    session.host.domain = domain;
    session.host.userName = "u%0";
    session.host.actions["Login"] = [&] {
        session.host.passwordView->ShowChangePassword(u"Expired", u"Choose a new one.", mandatory);
    };
    session.Play([&] {
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        QCOMPARE(Session::Screen(), 1);
        QCOMPARE(Session::Label("changePasswordTitle")->text(), u"Expired");
        QCOMPARE(Session::Label("changePasswordMessage")->text(), u"Choose a new one.");
        QCOMPARE(Session::Label("changePasswordUserNameLabel")->text(), label);
        QCOMPARE(Session::Find<QPushButton>("cancelPasswordChange")->isVisible(), !mandatory);
        QTRY_COMPARE(QApplication::focusWidget(), Session::Field("newPassword"));
        if (!mandatory) {
            Session::Click("cancelPasswordChange");
            QCOMPARE(session.host.calls.last(), "CancelChangePassword");
        }
    });
}

void TestPasswordChange::NewPasswordIsConfirmed_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("sent");
    QTest::newRow("equal") << "n3w"
                           << "n3w" << true;
    QTest::newRow("both empty: the host judges") << ""
                                                 << "" << true;
    QTest::newRow("other case") << "New"
                                << "new" << false;
}

void TestPasswordChange::NewPasswordIsConfirmed()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(bool, sent);
    Session session;
    session.host.actions["Login"] = [&] { session.host.passwordView->ShowChangePassword(u"", u"", false); };
    session.host.actions["ChangePassword"] = [&] { session.host.view->ShowTestBootMessage(); };
    session.Play([&] {
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        Session::Field("newPassword")->setText(first);
        Session::Field("confirmNewPassword")->setText(second);
        Boxes boxes({u"button3"_qs});
        QTest::keyClick(Session::Field("confirmNewPassword"), Qt::Key_Return);
        QCOMPARE(session.host.Count("ChangePassword(" + first.toUtf8() + ")"), sent ? 1 : 0);
        QCOMPARE(boxes.seen.size(), sent ? 0 : 1);
        QCOMPARE(Session::Field("confirmNewPassword")->text(), second);
        if (sent)
            QTRY_COMPARE(Session::Screen(), 5);
    });
}

void TestPasswordChange::RefusedPreparationKeepsThePage()
{
    Session session;
    AcceptLogins(session);
    session.host.changeAllowed = true;
    session.host.results["PrepareChangePassword"] = kro::kNotReady;
    session.host.actions["PrepareChangePassword"] = [&] { session.host.view->ShowTestBootMessage(); };
    session.Play([&] {
        Boxes boxes({u"Escape"_qs});
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("changePasswordButton");
        QCOMPARE(boxes.seen.size(), 1);
        QVERIFY(boxes.seen[0].text.contains(u"Line: 1307\n"));
        QCOMPARE(Session::Screen(), 0);
    });
}

PBA_REGISTER_TEST(TestPasswordChange);
#include "tst_password_change.moc"
