// Login by password: the page, domain and last user, what goes to the host, automatic logon.
#include <QApplication>
#include <QTest>

#include "fake_pbe.h"
#include "settings/paths.h"
#include "settings/text_file.h"
#include "test_main.h"
#include "views/session.h"

class TestLogin : public QObject
{
    Q_OBJECT

private slots:
    void Page_data();
    void Page();
    void EmptyFieldsAreRefused_data();
    void EmptyFieldsAreRefused();
    void TypedLoginReachesTheHost();
    void FailedLoginRemembersNothing_data();
    void FailedLoginRemembersNothing();
    void RememberedAreTheTextsThatWereSent();
    void DomainCanBeChanged();
    void PasswordChangeButtonNeedsBothTexts();
    void HostSelectsAField();
    void AutomaticLogon_data();
    void AutomaticLogon();
};

namespace {

void Remember(const char16_t *path, const QString &text)
{
    QVERIFY(WriteTextToFile(QString::fromUtf16(path), text));
}

QString Remembered(const char16_t *path)
{
    QString text = u"(none)"_qs;
    ReadTextFromFile(QString::fromUtf16(path), &text);
    return text;
}

} // namespace

void TestLogin::Page_data()
{
    QTest::addColumn<QString>("domain");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("focus");
    const QString none;
    QTest::newRow("first start") << none << none << none << "loginDomain";
    QTest::newRow("user only") << none << u"anna"_qs << none << "loginDomain";
    QTest::newRow("domain only") << u"OFFICE"_qs << none << "Domain: OFFICE"
                                 << "loginUserName";
    QTest::newRow("empty domain") << u""_qs << u"anna"_qs << "Domain: "
                                  << "loginPassword";
    QTest::newRow("both") << u"D%1 \u0416"_qs << u"  a\nb "_qs << u"Domain: D%1 \u0416"_qs << "loginPassword";
}

void TestLogin::Page()
{
    QFETCH(QString, domain);
    QFETCH(QString, user);
    QFETCH(QString, label);
    QFETCH(QString, focus);
    Session session;
    if (!domain.isNull())
        Remember(pba::kLastDomainPath, domain);
    if (!user.isNull())
        Remember(pba::kLastUserPath, user);
    session.Play([&] {
        QTRY_COMPARE(QApplication::focusWidget()->objectName(), focus);
        const bool remembered = !domain.isNull();
        QCOMPARE(Session::Label("domainLabel")->isVisible(), remembered);
        QCOMPARE(Session::Find<QPushButton>("changeDomainButton")->isVisible(), remembered);
        QCOMPARE(Session::Field("loginDomain")->isVisible(), !remembered);
        QCOMPARE(Session::Field("loginDomain")->text(), domain);
        if (remembered)
            QCOMPARE(Session::Label("domainLabel")->text(), label);
        QCOMPARE(Session::Field("loginUserName")->text().simplified(), user.simplified());
        QCOMPARE(Session::Field("loginPassword")->echoMode(), QLineEdit::Password);
    });
}

void TestLogin::EmptyFieldsAreRefused_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << ""
                             << ""
                             << "User name field is empty"
                             << "User name field is empty. Please enter a user name.";
    QTest::newRow("no user") << ""
                             << "p"
                             << "User name field is empty"
                             << "User name field is empty. Please enter a user name.";
    QTest::newRow("no password") << "u"
                                 << ""
                                 << "Password field is empty"
                                 << "Password field is empty. Please enter a password.";
    QTest::newRow("blanks pass") << " "
                                 << " "
                                 << ""
                                 << "";
}

void TestLogin::EmptyFieldsAreRefused()
{
    QFETCH(QString, user);
    QFETCH(QString, password);
    QFETCH(QString, title);
    QFETCH(QString, text);
    Session session;
    session.Play([&] {
        Boxes boxes({u"button3"_qs});
        Session::EnterCredentials(user, password);
        Session::Click("loginButton");
        QCOMPARE(boxes.seen.size(), title.isEmpty() ? 0 : 1);
        QCOMPARE(session.host.Count("StartLoginByPassword"), title.isEmpty() ? 1 : 0);
        if (!title.isEmpty()) {
            QCOMPARE(boxes.seen[0].title, title);
            QCOMPARE(boxes.seen[0].text, text);
        }
    });
}

// As a person does it: domain, Tab, name, Tab, password, Return.
void TestLogin::TypedLoginReachesTheHost()
{
    Session session;
    Remember(pba::kLastUserPath, u""_qs);
    session.Play([&] {
        QTRY_COMPARE(QApplication::focusWidget(), Session::Field("loginDomain"));
        Session::Type(u"OFFICE"_qs);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        Session::Type(u"anna"_qs);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        Session::Type(u"s3 cret"_qs);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(session.host.calls.mid(1),
                 (QList<QByteArray>{"StartLoginByPassword", "Login(OFFICE,anna,s3 cret)"}));
        QCOMPARE(Remembered(pba::kLastDomainPath), u"OFFICE");
        QCOMPARE(Remembered(pba::kLastUserPath), u"anna");
        QVERIFY(!fake_pbe::LogText().contains("s3 cret"));
    });
}

void TestLogin::FailedLoginRemembersNothing_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<bool>("silent");
    QTest::newRow("start fails") << QByteArray("StartLoginByPassword") << false;
    QTest::newRow("login fails") << QByteArray("Login") << false;
    QTest::newRow("no logic is handed over") << QByteArray() << true;
}

void TestLogin::FailedLoginRemembersNothing()
{
    QFETCH(QByteArray, call);
    QFETCH(bool, silent);
    Session session;
    session.host.silent = silent;
    if (!call.isEmpty())
        session.host.results[call] = kro::kAccessDenied;
    Remember(pba::kLastUserPath, u"old"_qs);
    session.Play([&] {
        Boxes boxes({u"Escape"_qs});
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        QCOMPARE(boxes.seen.size(), 1);
        if (silent)
            QVERIFY(boxes.seen[0].text.endsWith(u"Line: 640\nres: 8000006b(Not initialized)"));
        QCOMPARE(Remembered(pba::kLastDomainPath), u"(none)");
        QCOMPARE(Remembered(pba::kLastUserPath), u"old");
    });
}

void TestLogin::RememberedAreTheTextsThatWereSent()
{
    Session session;
    Remember(pba::kLastUserPath, u""_qs);
    session.host.actions["Login"] = [&] {
        Session::Field("loginUserName")->clear();
        Session::Field("loginDomain")->setText(u"other"_qs);
    };
    session.Play([&] {
        Session::Field("loginDomain")->setText(u"D"_qs);
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        QCOMPARE(Remembered(pba::kLastDomainPath), u"D");
        QCOMPARE(Remembered(pba::kLastUserPath), u"u");
    });
}

void TestLogin::DomainCanBeChanged()
{
    Session session;
    Remember(pba::kLastDomainPath, u"OLD"_qs);
    session.Play([&] {
        Session::Click("changeDomainButton");
        QTRY_COMPARE(QApplication::focusWidget(), Session::Field("loginDomain"));
        QVERIFY(!Session::Label("domainLabel")->isVisible());
        QCOMPARE(Session::Field("loginDomain")->text(), u"");
        QCOMPARE(Remembered(pba::kLastDomainPath), u"OLD");
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        QCOMPARE(session.host.calls.last(), "Login(,u,p)");
        QCOMPARE(Remembered(pba::kLastDomainPath), u"");
        QCOMPARE(Remembered(pba::kLastUserPath), u"(none)");
    });
}

void TestLogin::PasswordChangeButtonNeedsBothTexts()
{
    Session session;
    session.Play([&] {
        const auto *button = Session::Find<QPushButton>("changePasswordButton");
        QVERIFY(!button->isEnabled());
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        QVERIFY(button->isEnabled());
        Session::Field("loginUserName")->clear();
        QVERIFY(!button->isEnabled());
        Session::EnterCredentials(u"u"_qs, u""_qs);
        QVERIFY(!button->isEnabled());
    });
}

void TestLogin::HostSelectsAField()
{
    Session session;
    session.Play([&] {
        Session::EnterCredentials(u"user"_qs, u"pass"_qs);
        session.host.view->GetLoginByPasswordView()->SelectPassword();
        QCOMPARE(QApplication::focusWidget(), Session::Field("loginPassword"));
        Session::Type(u"x"_qs);
        QCOMPARE(Session::Field("loginPassword")->text(), u"x");
        session.host.view->GetLoginByPasswordView()->SelectUserName();
        Session::Type(u"y"_qs);
        QCOMPARE(Session::Field("loginUserName")->text(), u"y");
    });
}

void TestLogin::AutomaticLogon_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("suppressed");
    QTest::addColumn<QByteArray>("login");
    QTest::addColumn<QByteArray>("log");
    const QByteArray path = "\"\\pba\\autolgn.txt\"";
    QTest::newRow("no file") << QByteArray() << false << QByteArray()
                             << "Autologon: cannot perform autologon: file " + path + " does not exist.";
    QTest::newRow("empty file") << QByteArray("") << false << QByteArray()
                                << "Autologon: cannot perform autologon: file " + path + " is empty.";
    const QByteArray oneLine = "Autologon: cannot perform autologon: file " + path +
                               " contains only one line. Password should be located in second line.";
    QTest::newRow("one line") << QByteArray("anna") << false << QByteArray() << oneLine;
    QTest::newRow("one line, ended") << QByteArray("anna\r\n") << false << QByteArray() << oneLine;
    const QByteArray tried("Autologon: try to perform autologon.");
    QTest::newRow("two lines") << QByteArray("anna\r\n p w \r\nmore") << false
                               << QByteArray("Login(,anna, p w )") << tried;
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE"
                                          "a\0\n\0b\0",
                                          8)
                            << false << QByteArray("Login(,a,b)") << tried;
    QTest::newRow("empty password") << QByteArray("anna\n\n") << false << QByteArray() << tried;
    QTest::newRow("suppressed") << QByteArray("anna\npw\n") << true << QByteArray() << QByteArray();
}

void TestLogin::AutomaticLogon()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, suppressed);
    QFETCH(QByteArray, login);
    QFETCH(QByteArray, log);
    Session session;
    session.host.autologonSuppressed = suppressed;
    session.host.actions["Init"] = [&] {
        session.host.view->GetLoginByPasswordView()->SetLogic(&session.host);
    };
    if (!file.isNull())
        fake_pbe::WriteFile(pba::kAutologonPath, file);
    session.Play([&] {
        Boxes boxes({u"button3"_qs});
        QTest::qWait(suppressed ? 2300 : 1800);
        QVERIFY(!fake_pbe::LogText().contains("Autologon"));
        if (suppressed)
            return;
        QTRY_VERIFY(fake_pbe::LogText().contains(log + "\r\n"));
        if (log.contains("try to"))
            QTRY_VERIFY_WITH_TIMEOUT(
                login.isEmpty() ? boxes.seen.size() == 1 : session.host.calls.last() == login, 8000);
        QCOMPARE(session.host.Count("StartLoginByPassword"), login.isEmpty() ? 0 : 1);
    });
}

PBA_REGISTER_TEST(TestLogin);
#include "tst_login.moc"
